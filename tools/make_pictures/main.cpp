// Draws the two pictures of the main window: a dragster and a drag bike on the strip at dusk.
#include "drawing.h"
#include "tools/command_line/command_line.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <cstdio>

namespace {

constexpr int shownWidth = 960;
constexpr int shownHeight = 480;
constexpr int density = 2;

bool save(const QString& path, void (*vehicle)(QPainter&)) {
    QImage image(shownWidth * density, shownHeight * density, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    constexpr int dotsPerMeter = 96 * density * 10000 / 254;
    image.setDotsPerMeterX(dotsPerMeter);
    image.setDotsPerMeterY(dotsPerMeter);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(density, density);
    kvo::pictures::drawStrip(painter, QRectF(0, 0, shownWidth, shownHeight));
    vehicle(painter);
    painter.end();
    return image.save(path, "PNG", 0);
}

} // namespace

int main(int argc, char* argv[]) {
    const kvo::command_line::Syntax syntax{"make_pictures FOLDER",
        "Writes Kvocar.dll and Kvobike.dll into FOLDER: PNG files, in spite of their\n"
        "names, at twice the size at which they are shown, for screens of high\n"
        "density.\n",
        1, 1};
    const auto arguments = kvo::command_line::read(syntax, argc, argv);
    if (arguments.exitCode) return *arguments.exitCode;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    const QDir folder(QString::fromStdString(arguments.operands[0]));
    const bool saved =
        save(folder.filePath(QStringLiteral("Kvocar.dll")), kvo::pictures::drawDragster) &&
        save(folder.filePath(QStringLiteral("Kvobike.dll")), kvo::pictures::drawDragBike);
    if (!saved)
        std::fprintf(stderr, "make_pictures: cannot write into %s\n", qPrintable(folder.path()));
    return saved ? 0 : 1;
}
