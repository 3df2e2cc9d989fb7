/* A stand-in for WinSparkle.dll in the updater tests: each of WinSparkle's
 * functions that Zirvel uses appends one line, its name and arguments, to
 * the file named by ZIRVEL_WINSPARKLE_STAND_IN_LOG. Built without
 * win_sparkle_cleanup when WITHOUT_CLEANUP is defined, to stand for an
 * incomplete or foreign DLL of the same name. */
#include <stdio.h>
#include <windows.h>

#define STAND_IN_EXPORT __declspec(dllexport)

static void AppendLine(const char* line) {
    char path[MAX_PATH];
    const DWORD length = GetEnvironmentVariableA("ZIRVEL_WINSPARKLE_STAND_IN_LOG", path, sizeof path);
    if (length == 0 || length >= sizeof path) {
        return;
    }
    FILE* log = fopen(path, "ab");
    if (log == NULL) {
        return;
    }
    fprintf(log, "%s\n", line);
    fclose(log);
}

static void Utf8(const wchar_t* text, char* out, int size) {
    if (text == NULL) {
        snprintf(out, (size_t)size, "(null)");
    } else if (WideCharToMultiByte(CP_UTF8, 0, text, -1, out, size, NULL, NULL) == 0) {
        snprintf(out, (size_t)size, "(unreadable)");
    }
}

STAND_IN_EXPORT void __cdecl win_sparkle_set_appcast_url(const char* url) {
    char line[1024];
    snprintf(line, sizeof line, "win_sparkle_set_appcast_url(%s)", url == NULL ? "(null)" : url);
    AppendLine(line);
}

STAND_IN_EXPORT void __cdecl win_sparkle_set_app_details(const wchar_t* company, const wchar_t* app,
                                                         const wchar_t* version) {
    char companyText[256];
    char appText[256];
    char versionText[256];
    char line[1024];
    Utf8(company, companyText, sizeof companyText);
    Utf8(app, appText, sizeof appText);
    Utf8(version, versionText, sizeof versionText);
    snprintf(line, sizeof line, "win_sparkle_set_app_details(%s, %s, %s)", companyText, appText, versionText);
    AppendLine(line);
}

STAND_IN_EXPORT void __cdecl win_sparkle_set_automatic_check_for_updates(int state) {
    char line[128];
    snprintf(line, sizeof line, "win_sparkle_set_automatic_check_for_updates(%d)", state);
    AppendLine(line);
}

STAND_IN_EXPORT void __cdecl win_sparkle_init(void) { AppendLine("win_sparkle_init()"); }

STAND_IN_EXPORT void __cdecl win_sparkle_check_update_with_ui(void) {
    AppendLine("win_sparkle_check_update_with_ui()");
}

#ifndef WITHOUT_CLEANUP
STAND_IN_EXPORT void __cdecl win_sparkle_cleanup(void) { AppendLine("win_sparkle_cleanup()"); }
#endif
