#include "config/wheels_file.h"

#include <string_view>

#include "config/engine_settings.h"
#include "config/json_escape.h"
#include "config/json_number.h"
#include "config/json_reader.h"
#include "config/text.h"
#include "config/utf.h"

namespace zirvel {
namespace {

// Messages always name default.json, whichever wheels file is read.
constexpr std::u16string_view kUnreadableFile = u"Nie udało się wczytać pliku kół: ";
constexpr std::u16string_view kWheelWithoutActions = u"default.json: koło bez tablicy \"actions\".\n";
constexpr std::u16string_view kNoWheelsNorActions = u"default.json: brak \"wheels\" ani \"actions\".\n";

struct WheelsReader {
    std::u16string& messages;
    bool ok = true;

    void Warn(std::u16string message) {
        messages += message;
        ok = false;
    }

    // A key text as the file gives it: a string, a number's truncated
    // integer, anything else empty.
    static std::u16string KeyText(const JsonValue& value) {
        if (value.kind == JsonKind::String) return value.string;
        if (value.kind == JsonKind::Number) return DecimalText(TruncateToInt32(value.number));
        return {};
    }

    KeyCode ParseKey(const JsonValue& value, const std::u16string& functionName) {
        const std::u16string text = KeyText(value);
        KeyCode key = ParseKeyName(text);
        if (!key.valid) {
            Warn(Concat({u"default.json: nieznany klawisz \"", text, u"\" dla pola \"", functionName, u"\".\n"}));
        }
        return key;
    }

    static bool ParseAction(std::u16string_view word, StepKind& kind) {
        if (word == u"click" || word == u"klik") {
            kind = StepKind::Click;
        } else if (word == u"hold" || word == u"przytrzymaj") {
            kind = StepKind::Hold;
        } else if (word == u"release" || word == u"pusc" || word == u"puść") {
            kind = StepKind::Release;
        } else {
            return false;
        }
        return true;
    }

    static std::int32_t ClampValue(StepKind kind, double number) {
        std::int32_t value = TruncateToInt32(number);
        if (value < 0) value = 0;
        if (kind == StepKind::Click) {
            if (value < 1) value = 1;
            if (value > kMaxClickCount) value = kMaxClickCount;
        } else if (kind == StepKind::Hold && value > kMaxHoldMilliseconds) {
            value = kMaxHoldMilliseconds;
        }
        return value;
    }

    void ReadStep(const JsonValue& object, WheelFunction& function) {
        if (object.kind != JsonKind::Object) return;
        if (const JsonValue* open = object.Find(u"open")) {
            if (open->kind == JsonKind::String && !open->string.empty()) {
                Step step;
                step.kind = StepKind::Open;
                step.target = open->string;
                function.steps.push_back(std::move(step));
            }
            return;
        }
        Step step;
        if (const JsonValue* key = object.Find(u"key")) step.key = ParseKey(*key, function.name);

        std::u16string word = u"click";
        if (const JsonValue* action = object.Find(u"action"); action && action->kind == JsonKind::String) {
            word = action->string;
        }
        if (!ParseAction(word, step.kind)) {
            Warn(Concat({u"default.json: nieznana czynność \"", word, u"\" w polu \"", function.name, u"\".\n"}));
            step.kind = StepKind::Click;
        }

        step.value = step.kind == StepKind::Click ? 1 : 0;
        if (const JsonValue* value = object.Find(u"value"); value && value->kind == JsonKind::Number) {
            step.value = ClampValue(step.kind, value->number);
        }
        if (step.key.valid) function.steps.push_back(std::move(step));
    }

    // The older forms: "keys" (a list or one key) or "key", one click each.
    void ReadLegacyKeys(const JsonValue& keys, WheelFunction& function) {
        auto addClick = [&](const JsonValue& keyValue) {
            Step step;
            step.key = ParseKey(keyValue, function.name);
            step.kind = StepKind::Click;
            step.value = 1;
            if (step.key.valid) function.steps.push_back(std::move(step));
        };
        if (keys.kind == JsonKind::Array) {
            for (const JsonValue& item : keys.items) addClick(item);
        } else {
            addClick(keys);
        }
    }

    WheelFunction ReadFunction(const JsonValue& object) {
        WheelFunction function;
        // Anything but an object is an empty field that keeps its place.
        if (object.kind != JsonKind::Object) return function;

        if (const JsonValue* name = object.Find(u"name"); name && name->kind == JsonKind::String) {
            function.name = name->string;
        }
        if (const JsonValue* steps = object.Find(u"steps"); steps && steps->kind == JsonKind::Array) {
            for (const JsonValue& step : steps->items) ReadStep(step, function);
        } else if (const JsonValue* keys = object.Find(u"keys")) {
            ReadLegacyKeys(*keys, function);
        } else if (const JsonValue* key = object.Find(u"key")) {
            ReadLegacyKeys(*key, function);
        }
        if (const JsonValue* delay = object.Find(u"delay"); delay && delay->kind == JsonKind::Number) {
            function.delay = ClampedMilliseconds(delay->number, kMaxFunctionDelay);
        }
        if (const JsonValue* color = object.Find(u"color"); color && color->kind == JsonKind::String) {
            std::uint32_t parsed = 0;
            if (ParseHexColor(color->string, parsed)) {
                function.color = parsed;
                function.hasColor = true;
            }
        }
        if (const JsonValue* icon = object.Find(u"icon"); icon && icon->kind == JsonKind::String) {
            function.icon = icon->string;
        }
        if (const JsonValue* voice = object.Find(u"voice"); voice && voice->kind == JsonKind::String) {
            function.voice = voice->string;
        }
        return function;
    }

    // "apps": program names as strings; whatever else stands there is left
    // out with a message, and the wheel itself still loads.
    std::vector<std::u16string> ReadApps(const JsonValue& apps, const std::u16string& wheelName) {
        std::vector<std::u16string> names;
        if (apps.kind != JsonKind::Array) {
            Warn(Concat({u"default.json: \"apps\" koła \"", wheelName, u"\" nie jest tablicą — pomijam.\n"}));
            return names;
        }
        for (const JsonValue& item : apps.items) {
            if (item.kind != JsonKind::String || item.string.empty()) {
                Warn(Concat({u"default.json: pomijam element \"apps\" koła \"", wheelName,
                             u"\", który nie jest niepustym napisem.\n"}));
                continue;
            }
            names.push_back(item.string);
        }
        if (names.size() > kMaxProgramsPerWheel) {
            Warn(Concat({u"default.json: zbyt wiele programów w kole \"", wheelName, u"\" — używam pierwszych 64.\n"}));
            names.resize(kMaxProgramsPerWheel);
        }
        return names;
    }

    void ReadWheel(const JsonValue& actions, std::u16string name, std::vector<Wheel>& wheels,
                   const JsonValue* apps = nullptr) {
        Wheel wheel;
        wheel.name = std::move(name);
        if (apps) wheel.apps = ReadApps(*apps, wheel.name);
        for (const JsonValue& item : actions.items) wheel.functions.push_back(ReadFunction(item));
        if (wheel.functions.size() > kMaxFunctionsPerWheel) {
            Warn(Concat({u"default.json: zbyt wiele funkcji w kole \"", wheel.name, u"\" — używam pierwszych 24.\n"}));
            wheel.functions.resize(kMaxFunctionsPerWheel);
        }
        if (!wheel.functions.empty()) wheels.push_back(std::move(wheel));
    }
};

void AppendNumber(std::string& out, std::int32_t number) { out += std::to_string(number); }

void AppendQuoted(std::string& out, std::u16string_view text) {
    out += '"';
    AppendEscapedJsonString(out, text);
    out += '"';
}

void AppendHexColor(std::string& out, std::uint32_t color) {
    static constexpr char kHex[] = "0123456789ABCDEF";
    out += "\"#";
    for (int shift : {0, 8, 16}) {  // red, green, blue
        const unsigned channel = (color >> shift) & 0xFF;
        out += kHex[channel >> 4];
        out += kHex[channel & 0xF];
    }
    out += '"';
}

void WriteStep(std::string& out, const Step& step) {
    out += "            { ";
    if (step.kind == StepKind::Open) {
        out += "\"open\": ";
        AppendQuoted(out, step.target);
        out += " }";
        return;
    }
    out += "\"key\": ";
    AppendQuoted(out, step.key.name);
    switch (step.kind) {
        case StepKind::Hold:
            out += ", \"action\": \"hold\", \"value\": ";
            AppendNumber(out, step.value);
            break;
        case StepKind::Release:
            out += ", \"action\": \"release\"";
            break;
        default:
            out += ", \"action\": \"click\", \"value\": ";
            AppendNumber(out, step.value);
    }
    out += " }";
}

void WriteFunction(std::string& out, const WheelFunction& function) {
    out += "        { \"name\": ";
    AppendQuoted(out, function.name);
    if (function.hasColor) {
        out += ", \"color\": ";
        AppendHexColor(out, function.color);
    }
    if (function.delay != kDefaultFunctionDelay) {
        out += ", \"delay\": ";
        AppendNumber(out, function.delay);
    }
    if (!function.icon.empty()) {
        out += ", \"icon\": ";
        AppendQuoted(out, function.icon);
    }
    if (!function.voice.empty()) {
        out += ", \"voice\": ";
        AppendQuoted(out, function.voice);
    }
    out += ",\n          \"steps\": [\n";
    for (std::size_t i = 0; i < function.steps.size(); ++i) {
        WriteStep(out, function.steps[i]);
        out += i + 1 < function.steps.size() ? ",\n" : "\n";
    }
    out += "          ]\n        }";
}

}  // namespace

bool ReadWheelsFile(const std::u16string& path, std::vector<Wheel>& wheels, std::u16string& messages) {
    wheels.clear();
    WheelsReader reader{messages};

    JsonValue root;
    if (!ReadJsonFile(path, root)) {
        reader.Warn(Concat({kUnreadableFile, path, u"\n"}));
        return false;
    }
    const bool isObject = root.kind == JsonKind::Object;
    if (const JsonValue* list = isObject ? root.Find(u"wheels") : nullptr; list && list->kind == JsonKind::Array) {
        for (const JsonValue& element : list->items) {
            std::u16string name;
            const JsonValue* nameValue = element.Find(u"name");
            if (nameValue && nameValue->kind == JsonKind::String) name = nameValue->string;
            const JsonValue* actions = element.Find(u"actions");
            if (element.kind == JsonKind::Object && actions && actions->kind == JsonKind::Array) {
                reader.ReadWheel(*actions, std::move(name), wheels, element.Find(u"apps"));
            } else {
                reader.Warn(std::u16string(kWheelWithoutActions));
            }
        }
        return reader.ok;
    }
    if (const JsonValue* actions = isObject ? root.Find(u"actions") : nullptr;
        actions && actions->kind == JsonKind::Array) {
        reader.ReadWheel(*actions, std::u16string(), wheels);
        return reader.ok;
    }
    reader.Warn(std::u16string(kNoWheelsNorActions));
    return false;
}

std::string WriteWheelsFile(const std::vector<Wheel>& wheels) {
    std::string out;
    out.reserve(256 * (wheels.size() + 1));
    out += "{\n  \"wheels\": [\n";
    for (std::size_t w = 0; w < wheels.size(); ++w) {
        const Wheel& wheel = wheels[w];
        out += "    {\n      \"name\": ";
        AppendQuoted(out, wheel.name);
        if (!wheel.apps.empty()) {
            out += ",\n      \"apps\": [";
            for (std::size_t a = 0; a < wheel.apps.size(); ++a) {
                if (a > 0) out += ", ";
                AppendQuoted(out, wheel.apps[a]);
            }
            out += ']';
        }
        out += ",\n      \"actions\": [\n";
        for (std::size_t f = 0; f < wheel.functions.size(); ++f) {
            WriteFunction(out, wheel.functions[f]);
            out += f + 1 < wheel.functions.size() ? ",\n" : "\n";
        }
        out += "      ]\n    }";
        out += w + 1 < wheels.size() ? ",\n" : "\n";
    }
    out += "  ]\n}\n";
    return out;
}

std::u16string StepDisplayText(const Step& step) {
    if (step.kind == StepKind::Open) return Concat({u"otwórz:  ", step.target});
    std::u16string action;
    switch (step.kind) {
        case StepKind::Hold:
            if (step.value <= 0) {
                action = u"przytrzymaj (bez puszczania)";
            } else {
                action = Concat({u"przytrzymaj ", DecimalText(step.value), u" ms"});
            }
            break;
        case StepKind::Release:
            action = u"puść";
            break;
        default:
            action = u"klik";
            if (step.value >= 2) action += Concat({u" x", DecimalText(step.value)});
    }
    return Concat({action, u":  ", step.key.name});
}

}  // namespace zirvel
