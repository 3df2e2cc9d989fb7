// zirvel-render-picture SVG OUTPUT SIZE[,SIZE...]
// Build-time tool: draws an SVG as OUTPUT.png at one size, or as OUTPUT.ico
// with one PNG-compressed entry for each size.
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QStringList>

#include <cstdio>

#include "program_files/ico_file.h"
#include "program_files/svg_picture.h"

namespace {

int Fail(const QString& message) {
    std::fprintf(stderr, "zirvel-render-picture: %s\n", qPrintable(message));
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        return Fail("usage: zirvel-render-picture SVG OUTPUT.png|OUTPUT.ico SIZE[,SIZE...]");
    }
    const QString svgPath = QString::fromLocal8Bit(argv[1]);
    const QString outputPath = QString::fromLocal8Bit(argv[2]);

    QList<QImage> pictures;
    for (const QString& text : QString::fromLatin1(argv[3]).split(',')) {
        bool isNumber = false;
        const int size = text.toInt(&isNumber);
        if (!isNumber || size <= 0) {
            return Fail("not a size: " + text);
        }
        pictures.append(zirvel::program_files::RenderSvg(svgPath, size));
        if (pictures.last().isNull()) {
            return Fail("cannot draw " + svgPath);
        }
    }

    // The build may have removed the output folder since it was configured.
    QDir().mkpath(QFileInfo(outputPath).absolutePath());

    if (outputPath.endsWith(".png")) {
        if (pictures.size() != 1) {
            return Fail("a PNG holds one size");
        }
        return pictures.first().save(outputPath, "PNG") ? 0 : Fail("cannot write " + outputPath);
    }
    if (outputPath.endsWith(".ico")) {
        const QByteArray ico = zirvel::program_files::IcoWithPngEntries(pictures);
        QFile file(outputPath);
        if (ico.isEmpty() || !file.open(QIODevice::WriteOnly) || file.write(ico) != ico.size()) {
            return Fail("cannot write " + outputPath);
        }
        return 0;
    }
    return Fail("the output must end in .png or .ico: " + outputPath);
}
