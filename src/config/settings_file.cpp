#include "config/settings_file.h"

#include "config/hex_color.h"
#include "config/json_number.h"
#include "config/json_reader.h"
#include "config/text.h"

namespace zirvel {
namespace {

constexpr std::int32_t kMaxSendDelay = 2000;
constexpr std::int32_t kMaxKeyHold = 1000;
constexpr std::int32_t kMaxGazeDwell = 10000;

// Each reader leaves the field as it was when the key is missing or of
// another JSON kind.
void ReadBool(const JsonValue& root, std::u16string_view key, bool& field) {
    const JsonValue* value = root.Find(key);
    if (value && value->kind == JsonKind::Bool) field = value->boolean;
}

void ReadMilliseconds(const JsonValue& root, std::u16string_view key, std::int32_t maximum,
                      std::int32_t& field) {
    const JsonValue* value = root.Find(key);
    if (value && value->kind == JsonKind::Number) field = ClampedMilliseconds(value->number, maximum);
}

void ReadString(const JsonValue& root, std::u16string_view key, bool allowEmpty, std::u16string& field) {
    const JsonValue* value = root.Find(key);
    if (value && value->kind == JsonKind::String && (allowEmpty || !value->string.empty())) {
        field = value->string;
    }
}

// Returns false when segmentColor is present but unusable.
bool ReadSettings(const JsonValue& root, EngineSettings& settings) {
    bool ok = true;
    if (const JsonValue* color = root.Find(u"segmentColor")) {
        std::uint32_t parsed = 0;
        if (color->kind == JsonKind::String && ParseHexColor(color->string, parsed)) {
            settings.segmentColor = parsed;
        } else {
            ok = false;
        }
    }
    ReadString(root, u"toggleKey", true, settings.toggleKey);
    ReadMilliseconds(root, u"sendDelay", kMaxSendDelay, settings.sendDelay);
    ReadMilliseconds(root, u"keyHold", kMaxKeyHold, settings.keyHold);
    ReadBool(root, u"takeFocus", settings.takeFocus);
    ReadBool(root, u"gazeEnabled", settings.gazeEnabled);
    ReadMilliseconds(root, u"gazeDwell", kMaxGazeDwell, settings.gazeDwell);
    ReadString(root, u"gazeDllPath", true, settings.gazeDllPath);
    ReadBool(root, u"voiceEnabled", settings.voiceEnabled);
    ReadBool(root, u"voiceGlobal", settings.voiceGlobal);
    ReadString(root, u"voiceModel", false, settings.voiceModel);
    ReadString(root, u"voiceDllPath", true, settings.voiceDllPath);
    return ok;
}

}  // namespace

bool ReadSettingsFile(const std::u16string& path, EngineSettings& settings, std::u16string& messages) {
    bool ok = true;
    JsonValue root;
    if (ReadJsonFile(path, root) && root.kind == JsonKind::Object) {
        if (!ReadSettings(root, settings)) {
            messages += u"config.json: niepoprawny \"segmentColor\" (format \"#RRGGBB\").\n";
            ok = false;
        }
    } else {
        // Nothing is reset: the values of the previous load stay in force.
        messages += u"Nie udało się wczytać config.json — używam ustawień domyślnych.\n";
        ok = false;
    }

    settings.toggleKeyCode = ParseKeyName(settings.toggleKey);
    if (!settings.toggleKeyCode.valid || settings.toggleKeyCode.isMouse) {
        messages += Concat({u"config.json: nieznany klawisz \"", settings.toggleKey, u"\" — używam \"x\".\n"});
        settings.toggleKey = EngineSettings().toggleKey;
        settings.toggleKeyCode = ParseKeyName(settings.toggleKey);
        ok = false;
    }
    return ok;
}

}  // namespace zirvel
