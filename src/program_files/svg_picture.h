// Renders an SVG drawing into a square picture: the icons and the program's
// own icon are drawn as SVG and shipped as the PNG and ICO files that the
// program and Windows' shell read.
#pragma once

#include <QtCore/QString>
#include <QtGui/QImage>

namespace zirvel::program_files {

// A size x size premultiplied ARGB picture of the drawing, scaled to fit and
// centred on transparency; a null picture when the file is missing or is
// not valid SVG.
QImage RenderSvg(const QString& svgPath, int size);

}  // namespace zirvel::program_files
