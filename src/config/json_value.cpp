#include "config/json_value.h"

namespace zirvel {
namespace {

bool HasChildren(const JsonValue& node) { return !node.items.empty() || !node.members.empty(); }

// Moves the children that have children of their own onto `pending`, so that
// destroying `node` no longer recurses; leaves are destroyed in place.
void DetachChildren(JsonValue& node, std::vector<JsonValue>& pending) {
    for (JsonValue& item : node.items) {
        if (HasChildren(item)) pending.push_back(std::move(item));
    }
    for (auto& member : node.members) {
        if (HasChildren(member.second)) pending.push_back(std::move(member.second));
    }
    node.items.clear();
    node.members.clear();
}

}  // namespace

JsonValue::~JsonValue() {
    if (!HasChildren(*this)) return;
    std::vector<JsonValue> pending;
    DetachChildren(*this, pending);
    while (!pending.empty()) {
        JsonValue node = std::move(pending.back());
        pending.pop_back();
        DetachChildren(node, pending);
    }
}

JsonValue& JsonValue::operator=(JsonValue&& other) noexcept {
    if (this != &other) {
        // Release an old tree through the iterative destructor.
        if (HasChildren(*this)) JsonValue old(std::move(*this));
        kind = other.kind;
        boolean = other.boolean;
        number = other.number;
        string = std::move(other.string);
        items = std::move(other.items);
        members = std::move(other.members);
    }
    return *this;
}

const JsonValue* JsonValue::Find(std::u16string_view key) const {
    for (const auto& member : members) {
        if (member.first == key) return &member.second;
    }
    return nullptr;
}

}  // namespace zirvel
