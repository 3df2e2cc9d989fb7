// The pieces of a live test of the Windows programs: a private Xvfb, Wine
// on the Windows build's prefix, Zirvel's programs in a scratch program
// directory, the Win32 stand-in application whose log tells what it got,
// and a "user" who types and moves the mouse with XTest, which Wine takes
// as physical input.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "x_session.h"

namespace zirvel_test {

class WineSession {
public:
    // Copies the Windows build's program folder (Zirvel.exe,
    // zirvel-engine.exe, the tools, DLLs, icons/ and themes/) into a scratch
    // program directory with these config.json and default.json (none when empty).
    WineSession(const std::string& config, const std::string& wheels);
    // Ends every Wine process of the session (wineserver -k).
    ~WineSession();
    WineSession(const WineSession&) = delete;
    WineSession& operator=(const WineSession&) = delete;

    bool Ready() const { return ready_; }
    // From now on a prefix of this session's own, a copy of the build's
    // (hard links, the registry files copied), so that registry settings
    // such as the DPI stay out of every other test. Call before starting
    // anything; false when the copy failed.
    bool UsePrivatePrefix();
    // Adds a DWORD value to the registry of the session's prefix.
    bool SetRegistryDword(const std::string& key, const std::string& name, std::uint32_t value);
    // Further variables for the environment of every Wine process ("NAME=value").
    void AddEnvironment(std::string variable) { extraEnvironment_.push_back(std::move(variable)); }
    XConnection& User() { return *user_; }
    const std::filesystem::path& Directory() const { return directory_; }
    // The Windows form of a path of this machine (Wine's Z: drive).
    static std::string WindowsPath(const std::filesystem::path& path);
    // The same with its backslashes doubled, to stand inside a JSON string.
    static std::string WindowsPathInJson(const std::filesystem::path& path);

    // Starts the stand-in application with these options and gives it the
    // keyboard focus; true once it is ready.
    bool StartApplication(const std::vector<std::string>& options = {});
    // Starts zirvel-engine.exe (or Zirvel.exe); true once the engine's main
    // window exists and answers.
    bool StartEngine(const std::string& program = "zirvel-engine.exe");
    std::unique_ptr<ChildProcess> StartEngineProcess(const std::string& program = "zirvel-engine.exe");
    // The process of the first StartEngine.
    ChildProcess* Engine() const;
    // Zirvel.exe's front-end settings, which live in the prefix's registry:
    // tests that start it clear them first.
    void SetFrontEndSetting(const std::string& key, const std::string& value);
    void ClearFrontEndSettings();
    // Runs zirvel-activate.exe or zirvel-say.exe (by name) to its end: the exit code.
    int RunTool(const std::string& program, const std::string& argument);
    // Runs any program of the prefix (a Windows path or one of this machine).
    std::unique_ptr<ChildProcess> StartProgram(const std::vector<std::string>& command) { return Run(command); }
    // Ends every Wine process of the session.
    void EndAllPrograms() const { EndWine(); }
    // The prefix's user profile (C:\users\<name>) as a folder of this machine.
    static std::filesystem::path UserProfile();

    // A line for the application's command file.
    void Command(const std::string& line);
    // Waits until the engine's main thread has finished what it was doing
    // (a message sent to its main window was answered).
    bool EngineCaughtUp(std::chrono::milliseconds timeout = std::chrono::milliseconds(5000));
    void FocusApplication();

    // The application's log so far.
    std::vector<std::string> Log() const;
    // The same as one text, for a failing test to print.
    std::string LogText() const;
    // Waits for a line of the log, after the first `skip`, that starts with `prefix`.
    std::optional<std::string> WaitForLine(const std::string& prefix, std::chrono::milliseconds timeout,
                                           std::size_t skip = 0) const;
    // The lines (after `skip`) that start with `prefix`.
    std::vector<std::string> Lines(const std::string& prefix, std::size_t skip = 0) const;

    // The root window as a PNG file.
    bool Screenshot(const std::filesystem::path& file);

private:
    std::vector<std::string> Environment() const;
    std::unique_ptr<ChildProcess> Run(const std::vector<std::string>& command);
    void EndWine() const;

    PrivateXServer server_;
    std::unique_ptr<XConnection> user_;
    std::filesystem::path directory_;
    std::unique_ptr<ChildProcess> application_;
    std::vector<std::unique_ptr<ChildProcess>> engines_;
    bool ready_ = false;
    std::filesystem::path prefix_;
    std::vector<std::string> extraEnvironment_;
    int syncs_ = 0;
};

// The value after "NAME=" in a log line such as "key down vk=51 t=200".
long long Field(const std::string& line, const std::string& name);

}  // namespace zirvel_test
