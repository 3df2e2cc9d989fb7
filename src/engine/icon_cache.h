// The wheel's icons: decoded once per path for the life of the process.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/canvas.h"
#include "core/canvas_factory.h"

namespace zirvel {

// How a platform spells file paths.
enum class PathStyle { Windows, Posix };

#ifdef _WIN32
inline constexpr PathStyle kNativePathStyle = PathStyle::Windows;
#else
inline constexpr PathStyle kNativePathStyle = PathStyle::Posix;
#endif

// Where the file of an icon path lies. A path whose second character is ':'
// or whose first is '\' or '/' is used as it stands; any other is relative
// to the program directory. On Posix systems the backslashes of a relative
// path are separators, so wheel files written on Windows work unchanged.
std::u16string ResolveIconPath(std::u16string_view iconPath, std::u16string_view programDirectory,
                               PathStyle style = kNativePathStyle);

// An ordered list of (icon path as the function holds it, image or null),
// never cleared or pruned: a failed load stays cached as null, so that a
// missing file is not read again on every redraw.
class IconCache {
public:
    explicit IconCache(CanvasFactory& decoder) : decoder_(decoder) {}

    // The image for `iconPath`, or null: none for an empty path, the cached
    // entry (null included) for a path seen before (exact, case-sensitive),
    // else the decoded file, cached either way. A relative path is looked
    // for in the program directory first and then, when that has no such
    // file, in `shippedDirectory` (the icons an installed program ships;
    // empty when they lie in the program directory).
    const CanvasImage* GetIcon(const std::u16string& iconPath, std::u16string_view programDirectory,
                               std::u16string_view shippedDirectory = {});

    std::size_t Size() const { return entries_.size(); }

private:
    struct Entry {
        std::u16string path;
        std::shared_ptr<const CanvasImage> image;
    };

    CanvasFactory& decoder_;
    std::vector<Entry> entries_;
};

}  // namespace zirvel
