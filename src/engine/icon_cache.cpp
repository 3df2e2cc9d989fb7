#include "engine/icon_cache.h"

#include <algorithm>

#include "config/text.h"

namespace zirvel {

std::u16string ResolveIconPath(std::u16string_view iconPath, std::u16string_view programDirectory,
                               PathStyle style) {
    const bool standsAlone = (iconPath.size() >= 2 && iconPath[1] == u':') ||
                             (!iconPath.empty() && (iconPath[0] == u'\\' || iconPath[0] == u'/'));
    if (standsAlone) return std::u16string(iconPath);
    if (style == PathStyle::Windows) return Concat({programDirectory, u"\\", iconPath});
    std::u16string relative(iconPath);
    std::replace(relative.begin(), relative.end(), u'\\', u'/');
    return Concat({programDirectory, u"/", relative});
}

const CanvasImage* IconCache::GetIcon(const std::u16string& iconPath, std::u16string_view programDirectory,
                                      std::u16string_view shippedDirectory) {
    if (iconPath.empty()) return nullptr;
    for (const Entry& entry : entries_) {
        if (entry.path == iconPath) return entry.image.get();
    }
    const std::u16string own = ResolveIconPath(iconPath, programDirectory);
    std::shared_ptr<const CanvasImage> image = decoder_.DecodeImage(own);
    if (!image && !shippedDirectory.empty()) {
        const std::u16string shipped = ResolveIconPath(iconPath, shippedDirectory);
        if (shipped != own) image = decoder_.DecodeImage(shipped);
    }
    entries_.push_back(Entry{iconPath, std::move(image)});
    return entries_.back().image.get();
}

}  // namespace zirvel
