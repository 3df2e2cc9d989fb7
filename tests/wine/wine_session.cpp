#include "wine_session.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <fstream>
#include <sstream>
#include <thread>

#include "engine/picture_png.h"

namespace zirvel_test {
namespace {

using namespace std::chrono_literals;

const std::filesystem::path kWindowsBuild = ZIRVEL_WINDOWS_BUILD;
const std::filesystem::path kPrefix = kWindowsBuild / "wineprefix";
// Where Zirvel.exe's QSettings("Zirvel", "UI") live.
constexpr char kFrontEndSettingsKey[] = "HKCU\\Software\\Zirvel\\UI";

void WriteText(const std::filesystem::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

// The program folder as it ships: the programs, their DLLs and the Qt
// plugins, icons/ and themes/ (not the build's own files).
void CopyProgramFolder(const std::filesystem::path& build, const std::filesystem::path& folder) {
    for (const auto& entry : std::filesystem::directory_iterator(build)) {
        const std::filesystem::path& path = entry.path();
        const std::string extension = path.extension().string();
        const std::string name = path.filename().string();
        if (entry.is_directory()) {
            if (name == "icons" || name == "themes" || name == "platforms" || name == "styles" ||
                name == "imageformats") {
                std::filesystem::copy(path, folder / name, std::filesystem::copy_options::recursive);
            }
        } else if (extension == ".exe" || extension == ".dll" || extension == ".ico") {
            std::filesystem::copy_file(path, folder / name);
        }
    }
}

}  // namespace

long long Field(const std::string& line, const std::string& name) {
    const std::size_t at = line.find(" " + name + "=");
    if (at == std::string::npos) return -1;
    return std::stoll(line.substr(at + name.size() + 2), nullptr, name == "vk" || name == "scan" ? 16 : 10);
}

std::string WineSession::WindowsPath(const std::filesystem::path& path) {
    std::string text = "Z:" + path.string();
    for (char& c : text) {
        if (c == '/') c = '\\';
    }
    return text;
}

std::string WineSession::WindowsPathInJson(const std::filesystem::path& path) {
    std::string escaped;
    for (const char c : WindowsPath(path)) escaped += c == '\\' ? std::string("\\\\") : std::string(1, c);
    return escaped;
}

WineSession::WineSession(const std::string& config, const std::string& wheels) : server_(1280, 1024) {
    if (!server_.Running()) return;
    user_ = std::make_unique<XConnection>(server_.Name());
    if (!user_->Get()) return;
    directory_ = ScratchDirectory("zirvel_wine_");
    CopyProgramFolder(kWindowsBuild / "src" / "app", directory_);
    if (!config.empty()) WriteText(directory_ / "config.json", config);
    if (!wheels.empty()) WriteText(directory_ / "default.json", wheels);
    WriteText(directory_ / "voice.json", R"({"actions": []})");
    WriteText(directory_ / "commands.txt", "");
    prefix_ = kPrefix;
    EndWine();  // a server left by an earlier session would serve its X display
    ready_ = std::filesystem::exists(kPrefix / "system.reg");
}

WineSession::~WineSession() {
    EndWine();
    engines_.clear();
    application_.reset();
    user_.reset();
    std::error_code ignored;
    if (!directory_.empty()) std::filesystem::remove_all(directory_, ignored);
}

std::vector<std::string> WineSession::Environment() const {
    std::vector<std::string> variables{
        "DISPLAY=" + server_.Name(), "WINEPREFIX=" + prefix_.string(), "WINEDEBUG=-all",
        // No Mono or Gecko installers; a crash ends the program instead of waiting in the debugger.
        "WINEDLLOVERRIDES=mscoree,mshtml=;winedbg.exe=d", "LC_ALL=C.UTF-8"};
    variables.insert(variables.end(), extraEnvironment_.begin(), extraEnvironment_.end());
    return variables;
}

std::unique_ptr<ChildProcess> WineSession::Run(const std::vector<std::string>& command) {
    std::vector<std::string> line = {"wine"};
    line.insert(line.end(), command.begin(), command.end());
    return std::make_unique<ChildProcess>(line, Environment(), directory_ / "wine-output.txt");
}

bool WineSession::UsePrivatePrefix() {
    if (!ready_) return false;
    const std::filesystem::path copy = directory_ / "wineprefix";
    std::error_code error;
    std::filesystem::copy(kPrefix, copy,
                          std::filesystem::copy_options::recursive | std::filesystem::copy_options::create_hard_links |
                              std::filesystem::copy_options::copy_symlinks,
                          error);
    if (error) return false;
    // The registry is what the session changes: real copies, not links.
    for (const char* name : {"system.reg", "user.reg", "userdef.reg"}) {
        std::filesystem::remove(copy / name, error);
        std::filesystem::copy_file(kPrefix / name, copy / name, error);
        if (error) return false;
    }
    prefix_ = copy;
    return true;
}

bool WineSession::SetRegistryDword(const std::string& key, const std::string& name, std::uint32_t value) {
    auto reg = Run({"reg", "add", key, "/v", name, "/t", "REG_DWORD", "/d", std::to_string(value), "/f"});
    return reg->WaitForExit(30s).value_or(-1) == 0;
}

void WineSession::EndWine() const {
    ChildProcess kill({"wineserver", "-k"}, Environment(), "/dev/null");
    kill.WaitForExit(10s);
    ChildProcess wait({"wineserver", "-w"}, Environment(), "/dev/null");
    wait.WaitForExit(10s);
}

bool WineSession::StartApplication(const std::vector<std::string>& options) {
    std::vector<std::string> command = {(kWindowsBuild / "tests" / "win32" / "zirvel_test_application.exe").string(),
                                        WindowsPath(directory_ / "application.log"), "--commands",
                                        WindowsPath(directory_ / "commands.txt")};
    command.insert(command.end(), options.begin(), options.end());
    application_ = Run(command);
    if (!WaitForLine("ready", 60s)) return false;
    FocusApplication();
    return WaitForLine("focus in", 10s).has_value();
}

void WineSession::FocusApplication() {
    Window window = 0;
    WaitUntil([&] { return (window = user_->FindWindow("Zirvel test application")) != 0; }, 10s);
    if (window == 0) return;
    XRaiseWindow(user_->Get(), window);
    XSetInputFocus(user_->Get(), window, RevertToParent, CurrentTime);
    XSync(user_->Get(), False);
}

std::unique_ptr<ChildProcess> WineSession::StartEngineProcess(const std::string& program) {
    return Run({(directory_ / program).string()});
}

bool WineSession::StartEngine(const std::string& program) {
    engines_.push_back(StartEngineProcess(program));
    if (!WaitForLine("engine up", 60s)) return false;
    // The main window knows the phrases only once the start has run (hot
    // key, files, phrases); a box shown during the start delays that.
    return WaitUntil([this] { return RunTool("zirvel-say.exe", "schowaj siatkę") == 0; }, 30s, 200ms);
}

ChildProcess* WineSession::Engine() const { return engines_.empty() ? nullptr : engines_.front().get(); }

void WineSession::SetFrontEndSetting(const std::string& key, const std::string& value) {
    auto reg = Run({"reg", "add", kFrontEndSettingsKey, "/v", key, "/d", value, "/f"});
    reg->WaitForExit(30s);
}

void WineSession::ClearFrontEndSettings() {
    auto reg = Run({"reg", "delete", kFrontEndSettingsKey, "/f"});
    reg->WaitForExit(30s);
}

std::filesystem::path WineSession::UserProfile() {
    for (const auto& entry : std::filesystem::directory_iterator(kPrefix / "drive_c" / "users")) {
        if (entry.is_directory() && entry.path().filename() != "Public") return entry.path();
    }
    return {};
}

int WineSession::RunTool(const std::string& program, const std::string& argument) {
    auto tool = Run({(directory_ / program).string(), argument});
    return tool->WaitForExit(30s).value_or(-1);
}

void WineSession::Command(const std::string& line) {
    std::ofstream(directory_ / "commands.txt", std::ios::app) << line << "\n";
}

std::vector<std::string> WineSession::Log() const {
    std::vector<std::string> lines;
    std::ifstream file(directory_ / "application.log");
    std::string line;
    // A line still being written ends without its newline: not yet.
    while (std::getline(file, line) && !file.eof()) lines.push_back(line);
    return lines;
}

bool WineSession::EngineCaughtUp(std::chrono::milliseconds timeout) {
    const std::string number = std::to_string(++syncs_);
    const std::size_t before = Log().size();
    Command("sync-main " + number);
    return WaitForLine("main answered " + number, timeout, before).has_value();
}

std::string WineSession::LogText() const {
    std::string text;
    for (const std::string& line : Log()) text += line + '\n';
    return text;
}

std::vector<std::string> WineSession::Lines(const std::string& prefix, std::size_t skip) const {
    std::vector<std::string> found;
    const std::vector<std::string> lines = Log();
    for (std::size_t i = skip; i < lines.size(); ++i) {
        if (lines[i].rfind(prefix, 0) == 0) found.push_back(lines[i]);
    }
    return found;
}

std::optional<std::string> WineSession::WaitForLine(const std::string& prefix, std::chrono::milliseconds timeout,
                                                    std::size_t skip) const {
    std::optional<std::string> found;
    WaitUntil(
        [&] {
            const std::vector<std::string> lines = Lines(prefix, skip);
            if (!lines.empty()) found = lines.front();
            return found.has_value();
        },
        timeout, 2ms);
    return found;
}

bool WineSession::Screenshot(const std::filesystem::path& file) {
    Display* display = user_->Get();
    const int width = DisplayWidth(display, DefaultScreen(display));
    const int height = DisplayHeight(display, DefaultScreen(display));
    XImage* image = XGetImage(display, user_->Root(), 0, 0, static_cast<unsigned>(width),
                              static_cast<unsigned>(height), AllPlanes, ZPixmap);
    if (!image) return false;
    zirvel::Picture picture;
    picture.width = width;
    picture.height = height;
    picture.pixels.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            picture.pixels.push_back(0xFF000000u | (static_cast<std::uint32_t>(XGetPixel(image, x, y)) & 0xFFFFFFu));
        }
    }
    XDestroyImage(image);
    return zirvel::WritePicturePng(picture, file.u16string());
}

}  // namespace zirvel_test
