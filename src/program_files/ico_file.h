// The Windows icon container with PNG-compressed entries (read by Windows
// since Vista and by Qt's ICO plugin): one file carries every size that
// the shell asks for, from the 16 px title bar icon to the 256 px tile.
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtGui/QImage>

namespace zirvel::program_files {

// The .ico bytes for these square pictures, one entry each, in the given
// order; empty when a picture is null, not square or larger than 256 px.
QByteArray IcoWithPngEntries(const QList<QImage>& pictures);

}  // namespace zirvel::program_files
