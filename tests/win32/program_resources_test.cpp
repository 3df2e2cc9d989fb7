// What the built programs carry in their resources, read the way Windows
// reads them: the manifest through an activation context made from the
// .exe (the loader's own parser), the version through the version API, the
// icon through the resource and icon APIs.
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <ostream>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace {

struct Program {
    const char* path;  // as the build knows it
    const wchar_t* fileName;
    const wchar_t* description;
    bool hasIcon;
};

const Program kPrograms[] = {
#ifdef ZIRVEL_PROGRAM_ZIRVEL
    {ZIRVEL_PROGRAM_ZIRVEL, L"Zirvel.exe", L"Zirvel", true},
#endif
    {ZIRVEL_PROGRAM_ENGINE, L"zirvel-engine.exe", L"Zirvel (sam silnik koła)", true},
    {ZIRVEL_PROGRAM_SAY, L"zirvel-say.exe", L"Zirvel: polecenie głosowe podane tekstem", false},
    {ZIRVEL_PROGRAM_ACTIVATE, L"zirvel-activate.exe", L"Zirvel: aktywacja pliku kół", false},
    {ZIRVEL_PROGRAM_CHECK, L"zirvel-check.exe", L"Zirvel: sprawdzenie plików konfiguracji", false},
};

// COMPATIBILITY_CONTEXT_ELEMENT as Microsoft documents it since Windows 10
// version 1903; MinGW's headers still have the older one, without
// MaxVersionTested.
struct CompatibilityElement {
    GUID Id;
    ACTCTX_COMPATIBILITY_ELEMENT_TYPE Type;
    ULONGLONG MaxVersionTested;
};
struct CompatibilityInformation {
    DWORD ElementCount;
    CompatibilityElement Elements[1];
};

// Windows 10 and Windows 11 share one supportedOS id.
constexpr GUID kWindows10And11 = {0x8e0f7a12, 0xbfb3, 0x4fe8, {0xb9, 0xa5, 0x48, 0xfd, 0x50, 0xa1, 0x5a, 0x9a}};

std::wstring FullPath(const char* path) {
    const std::wstring wide(path, path + std::char_traits<char>::length(path));
    wchar_t full[MAX_PATH];
    const DWORD length = GetFullPathNameW(wide.c_str(), MAX_PATH, full, nullptr);
    return length > 0 && length < MAX_PATH ? std::wstring(full, length) : wide;
}

struct ModuleCloser {
    void operator()(HMODULE module) const { FreeLibrary(module); }
};
using ResourceModule = std::unique_ptr<std::remove_pointer_t<HMODULE>, ModuleCloser>;

struct ActCtxReleaser {
    void operator()(HANDLE context) const { ReleaseActCtx(context); }
};
using ActivationContext = std::unique_ptr<void, ActCtxReleaser>;

class ProgramResourcesTest : public ::testing::TestWithParam<Program> {
protected:
    void SetUp() override {
        path_ = FullPath(GetParam().path);
        ASSERT_NE(GetFileAttributesW(path_.c_str()), INVALID_FILE_ATTRIBUTES) << "not built: " << GetParam().path;
    }

    ResourceModule Resources() const {
        return ResourceModule(
            LoadLibraryExW(path_.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE));
    }

    // The activation context the loader makes from the program's manifest.
    ActivationContext ManifestContext() const {
        ACTCTXW request{};
        request.cbSize = sizeof(request);
        request.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID;
        request.lpSource = path_.c_str();
        request.lpResourceName = MAKEINTRESOURCEW(1);
        HANDLE context = CreateActCtxW(&request);
        return ActivationContext(context == INVALID_HANDLE_VALUE ? nullptr : context);
    }

    // One query of the activation context, in a buffer of the size it asks for.
    static std::vector<BYTE> Query(HANDLE context, ULONG infoClass, DWORD* index = nullptr) {
        SIZE_T required = 0;
        QueryActCtxW(0, context, index, infoClass, nullptr, 0, &required);
        std::vector<BYTE> buffer(std::max<SIZE_T>(required, 1));
        if (!QueryActCtxW(0, context, index, infoClass, buffer.data(), buffer.size(), &required)) return {};
        return buffer;
    }

    static std::wstring Setting(HANDLE context, const wchar_t* nameSpace, const wchar_t* name) {
        wchar_t value[128] = {};
        SIZE_T written = 0;
        if (!QueryActCtxSettingsW(0, context, nameSpace, name, value, std::size(value), &written)) return L"(none)";
        return value;
    }

    std::wstring VersionString(const std::vector<BYTE>& info, const wchar_t* name) const {
        void* value = nullptr;
        UINT length = 0;
        const std::wstring key = std::wstring(L"\\StringFileInfo\\041504B0\\") + name;
        if (!VerQueryValueW(info.data(), key.c_str(), &value, &length) || length == 0) return L"(none)";
        return static_cast<const wchar_t*>(value);
    }

    std::wstring path_;
};

BOOL CALLBACK CollectName(HMODULE, LPCWSTR, LPWSTR name, LONG_PTR names) {
    reinterpret_cast<std::vector<std::wstring>*>(names)->push_back(
        IS_INTRESOURCE(name) ? L"#" + std::to_wstring(reinterpret_cast<ULONG_PTR>(name)) : std::wstring(name));
    return TRUE;
}

BOOL CALLBACK CountLanguage(HMODULE, LPCWSTR, LPCWSTR, WORD, LONG_PTR count) {
    ++*reinterpret_cast<int*>(count);
    return TRUE;
}

std::vector<std::wstring> ResourceNames(HMODULE module, LPCWSTR type) {
    std::vector<std::wstring> names;
    EnumResourceNamesW(module, type, CollectName, reinterpret_cast<LONG_PTR>(&names));
    return names;
}

TEST_P(ProgramResourcesTest, CarriesOneManifestAsResourceOne) {
    const ResourceModule module = Resources();
    ASSERT_TRUE(module);
    // A second manifest (a toolchain's default one) would leave which one wins to chance.
    EXPECT_EQ(ResourceNames(module.get(), RT_MANIFEST), std::vector<std::wstring>{L"#1"});
    int languages = 0;
    EnumResourceLanguagesW(module.get(), RT_MANIFEST, MAKEINTRESOURCEW(1), CountLanguage,
                           reinterpret_cast<LONG_PTR>(&languages));
    EXPECT_EQ(languages, 1);
}

// What the loader makes of the program's manifest.
class ProgramManifestTest : public ProgramResourcesTest {
protected:
    void SetUp() override {
        ProgramResourcesTest::SetUp();
        if (HasFatalFailure()) return;
        context_ = ManifestContext();
        ASSERT_TRUE(context_) << "no manifest the loader accepts, error " << GetLastError();
    }

    ActivationContext context_;
};

TEST_P(ProgramManifestTest, AsksForPerMonitorDpiAwarenessV2WithPerMonitorAsTheFallback) {
    EXPECT_EQ(Setting(context_.get(), L"http://schemas.microsoft.com/SMI/2016/WindowsSettings", L"dpiAwareness"),
              L"PerMonitorV2, PerMonitor");
    // What Windows 10 before version 1607 reads instead.
    EXPECT_EQ(Setting(context_.get(), L"http://schemas.microsoft.com/SMI/2005/WindowsSettings", L"dpiAware"),
              L"true/pm");
}

TEST_P(ProgramManifestTest, RunsItWithTheUsersOwnRights) {
    const std::vector<BYTE> buffer = Query(context_.get(), RunlevelInformationInActivationContext);
    ASSERT_GE(buffer.size(), sizeof(ACTIVATION_CONTEXT_RUN_LEVEL_INFORMATION));
    const auto* runLevel = reinterpret_cast<const ACTIVATION_CONTEXT_RUN_LEVEL_INFORMATION*>(buffer.data());
    EXPECT_EQ(runLevel->RunLevel, ACTCTX_RUN_LEVEL_AS_INVOKER);
    EXPECT_EQ(runLevel->UiAccess, 0u);
}

TEST_P(ProgramManifestTest, DeclaresWindows10And11) {
    const std::vector<BYTE> buffer = Query(context_.get(), CompatibilityInformationInActivationContext);
    ASSERT_GE(buffer.size(), sizeof(DWORD));
    const auto* compatibility = reinterpret_cast<const CompatibilityInformation*>(buffer.data());
    const std::size_t room = (buffer.size() - offsetof(CompatibilityInformation, Elements)) / sizeof(CompatibilityElement);
    ASSERT_LE(compatibility->ElementCount, room);
    bool declared = false;
    for (DWORD i = 0; i < compatibility->ElementCount; ++i) {
        const CompatibilityElement& element = compatibility->Elements[i];
        declared = declared || (element.Type == ACTCTX_COMPATIBILITY_ELEMENT_TYPE_OS &&
                                IsEqualGUID(element.Id, kWindows10And11));
    }
    EXPECT_TRUE(declared);
}

TEST_P(ProgramManifestTest, BindsVersion6OfTheCommonControls) {
    const std::vector<BYTE> details = Query(context_.get(), ActivationContextDetailedInformation);
    ASSERT_GE(details.size(), sizeof(ACTIVATION_CONTEXT_DETAILED_INFORMATION));
    const DWORD assemblies =
        reinterpret_cast<const ACTIVATION_CONTEXT_DETAILED_INFORMATION*>(details.data())->ulAssemblyCount;
    std::wstring identities;
    // Assembly 1 is the program itself; its dependencies follow.
    for (DWORD index = 1; index <= assemblies; ++index) {
        const std::vector<BYTE> assembly = Query(context_.get(), AssemblyDetailedInformationInActivationContext, &index);
        if (assembly.size() < sizeof(ACTIVATION_CONTEXT_ASSEMBLY_DETAILED_INFORMATION)) continue;
        const auto* info = reinterpret_cast<const ACTIVATION_CONTEXT_ASSEMBLY_DETAILED_INFORMATION*>(assembly.data());
        if (info->lpAssemblyEncodedAssemblyIdentity) identities += info->lpAssemblyEncodedAssemblyIdentity + std::wstring(L"\n");
    }
    const std::size_t controls = identities.find(L"Microsoft.Windows.Common-Controls");
    ASSERT_NE(controls, std::wstring::npos) << "dependencies: " << testing::PrintToString(identities);
    const std::size_t line = identities.find(L'\n', controls);
    // The version bound is the system's own build of version 6 (6.0.x.y).
    EXPECT_NE(identities.substr(controls, line - controls).find(L"version=\"6."), std::wstring::npos)
        << testing::PrintToString(identities);
}

TEST_P(ProgramResourcesTest, ItsVersionIsTheProjectsWithPublisherAndAPolishDescription) {
    DWORD ignored = 0;
    const DWORD size = GetFileVersionInfoSizeW(path_.c_str(), &ignored);
    ASSERT_GT(size, 0u) << "no version resource";
    std::vector<BYTE> info(size);
    ASSERT_TRUE(GetFileVersionInfoW(path_.c_str(), 0, size, info.data()));

    void* value = nullptr;
    UINT length = 0;
    ASSERT_TRUE(VerQueryValueW(info.data(), L"\\", &value, &length));
    const auto* fixed = static_cast<const VS_FIXEDFILEINFO*>(value);
    EXPECT_EQ(fixed->dwFileVersionMS, static_cast<DWORD>(MAKELONG(ZIRVEL_VERSION_MINOR, ZIRVEL_VERSION_MAJOR)));
    EXPECT_EQ(fixed->dwFileVersionLS, static_cast<DWORD>(MAKELONG(0, ZIRVEL_VERSION_PATCH)));
    EXPECT_EQ(fixed->dwProductVersionMS, fixed->dwFileVersionMS);
    EXPECT_EQ(fixed->dwFileType, static_cast<DWORD>(VFT_APP));

    ASSERT_TRUE(VerQueryValueW(info.data(), L"\\VarFileInfo\\Translation", &value, &length));
    ASSERT_GE(length, 2 * sizeof(WORD));
    EXPECT_EQ(static_cast<const WORD*>(value)[0], 0x0415);  // Polish
    EXPECT_EQ(static_cast<const WORD*>(value)[1], 1200);    // Unicode

    EXPECT_EQ(VersionString(info, L"CompanyName"), L"Zirvel");
    EXPECT_EQ(VersionString(info, L"ProductName"), L"Zirvel");
    EXPECT_EQ(VersionString(info, L"FileDescription"), GetParam().description);
    EXPECT_EQ(VersionString(info, L"OriginalFilename"), GetParam().fileName);
    const std::wstring version = ZIRVEL_VERSION_TEXT;
    EXPECT_EQ(VersionString(info, L"ProductVersion"), version);
    EXPECT_EQ(VersionString(info, L"FileVersion"), version + L".0");
}

// The programs a user starts from the Start menu or Explorer; the console tools have none.
using ProgramIconTest = ProgramResourcesTest;

std::vector<Program> ProgramsWithIcon() {
    std::vector<Program> programs;
    std::copy_if(std::begin(kPrograms), std::end(kPrograms), std::back_inserter(programs),
                 [](const Program& program) { return program.hasIcon; });
    return programs;
}

TEST_P(ProgramIconTest, CarriesTheIconInEverySize) {
    // What Explorer, the Start menu shortcut and the uninstall entry show: the first icon.
    EXPECT_EQ(ExtractIconExW(path_.c_str(), -1, nullptr, nullptr, 0), 1u);

    const ResourceModule module = Resources();
    ASSERT_TRUE(module);
    const std::vector<std::wstring> groups = ResourceNames(module.get(), RT_GROUP_ICON);
    ASSERT_EQ(groups.size(), 1u);
    HRSRC groupResource = FindResourceW(module.get(), groups.front().c_str(), RT_GROUP_ICON);
    ASSERT_NE(groupResource, nullptr);
    auto* group = static_cast<BYTE*>(LockResource(LoadResource(module.get(), groupResource)));
    ASSERT_NE(group, nullptr);

    std::set<int> sizes;
    for (const int size : {16, 24, 32, 48, 64, 256}) {
        // The entry Windows picks for this size, drawn from its bytes (PNG inside).
        const int id = LookupIconIdFromDirectoryEx(group, TRUE, size, size, LR_DEFAULTCOLOR);
        HRSRC iconResource = FindResourceW(module.get(), MAKEINTRESOURCEW(id), RT_ICON);
        ASSERT_NE(iconResource, nullptr) << size << " px";
        auto* bytes = static_cast<BYTE*>(LockResource(LoadResource(module.get(), iconResource)));
        HICON icon = CreateIconFromResourceEx(bytes, SizeofResource(module.get(), iconResource), TRUE, 0x00030000,
                                              size, size, LR_DEFAULTCOLOR);
        ASSERT_NE(icon, nullptr) << size << " px";
        ICONINFO parts{};
        ASSERT_TRUE(GetIconInfo(icon, &parts));
        BITMAP bitmap{};
        GetObjectW(parts.hbmColor ? parts.hbmColor : parts.hbmMask, sizeof(bitmap), &bitmap);
        if (parts.hbmColor) DeleteObject(parts.hbmColor);
        if (parts.hbmMask) DeleteObject(parts.hbmMask);
        DestroyIcon(icon);
        EXPECT_EQ(bitmap.bmWidth, size) << "no entry of " << size << " px";
        sizes.insert(id);
    }
    EXPECT_EQ(sizes.size(), 6u) << "two sizes share an entry";
}

void PrintTo(const Program& program, std::ostream* out) { *out << program.path; }

std::string ProgramName(const testing::TestParamInfo<Program>& info) {
    std::string name;
    for (const wchar_t* c = info.param.fileName; *c && *c != L'.'; ++c) {
        if ((*c >= L'a' && *c <= L'z') || (*c >= L'A' && *c <= L'Z')) name += static_cast<char>(*c);
    }
    return name;
}

INSTANTIATE_TEST_SUITE_P(EveryProgram, ProgramResourcesTest, testing::ValuesIn(kPrograms), ProgramName);
INSTANTIATE_TEST_SUITE_P(EveryProgram, ProgramManifestTest, testing::ValuesIn(kPrograms), ProgramName);
INSTANTIATE_TEST_SUITE_P(TheShellsPrograms, ProgramIconTest, testing::ValuesIn(ProgramsWithIcon()), ProgramName);

}  // namespace
