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

void ReadCount(const JsonValue& root, std::u16string_view key, std::int32_t minimum, std::int32_t maximum,
               std::int32_t& field) {
    const JsonValue* value = root.Find(key);
    if (value && value->kind == JsonKind::Number) field = ClampedNumber(value->number, minimum, maximum);
}

// Returns false when scanMode is present but neither "auto" nor "step".
bool ReadScanMode(const JsonValue& root, ScanMode& mode) {
    const JsonValue* value = root.Find(u"scanMode");
    if (!value) return true;
    if (value->kind == JsonKind::String && value->string == u"auto") {
        mode = ScanMode::Auto;
    } else if (value->kind == JsonKind::String && value->string == u"step") {
        mode = ScanMode::Step;
    } else {
        return false;
    }
    return true;
}

void ReadScanSettings(const JsonValue& root, EngineSettings& settings, bool& ok, std::u16string& messages) {
    ReadBool(root, u"scanEnabled", settings.scanEnabled);
    if (!ReadScanMode(root, settings.scanMode)) {
        messages += u"config.json: niepoprawny \"scanMode\" (dozwolone \"auto\" albo \"step\").\n";
        ok = false;
    }
    ReadCount(root, u"scanInterval", kMinScanInterval, kMaxScanInterval, settings.scanInterval);
    ReadCount(root, u"scanLoops", kMinScanLoops, kMaxScanLoops, settings.scanLoops);
    ReadString(root, u"scanStepKey", true, settings.scanStepKey);
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

// The step key is a keyboard key other than the toggle key; anything else
// leaves scanning without a step key.
void CheckScanStepKey(EngineSettings& settings, bool& ok, std::u16string& messages) {
    settings.scanStepKeyCode = KeyCode();
    const KeyCode code = ParseKeyName(settings.scanStepKey);
    if (settings.scanStepKey.empty()) {
        // No step key: allowed, and needed only in step mode.
    } else if (!code.valid || code.isMouse) {
        messages += Concat({u"config.json: nieznany klawisz \"", settings.scanStepKey,
                            u"\" — \"scanStepKey\" zostaje pusty.\n"});
        settings.scanStepKey.clear();
        ok = false;
    } else if (code.vk == settings.toggleKeyCode.vk) {
        messages += Concat({u"config.json: \"scanStepKey\" \"", settings.scanStepKey,
                            u"\" to ten sam klawisz co \"toggleKey\" — zostaje pusty.\n"});
        settings.scanStepKey.clear();
        ok = false;
    } else {
        settings.scanStepKeyCode = code;
    }
    if (settings.scanEnabled && settings.scanMode == ScanMode::Step && !settings.scanStepKeyCode.valid) {
        messages += u"config.json: tryb \"step\" wymaga klawisza \"scanStepKey\" — podświetlenie przesuwa się samo.\n";
        ok = false;
    }
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
        ReadScanSettings(root, settings, ok, messages);
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
    CheckScanStepKey(settings, ok, messages);
    return ok;
}

}  // namespace zirvel
