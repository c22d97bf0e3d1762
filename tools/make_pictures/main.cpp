// Draws the two pictures of the main window: a dragster and a drag bike on the strip at dusk.
// Usage: make_pictures FOLDER   writes Kvocar.dll and Kvobike.dll there (PNG files, in spite of
// their names) at twice the size at which they are shown, for screens of high density.
#include "drawing.h"

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
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: make_pictures FOLDER\n");
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    const bool saved =
        save(folder.filePath(QStringLiteral("Kvocar.dll")), kvo::pictures::drawDragster) &&
        save(folder.filePath(QStringLiteral("Kvobike.dll")), kvo::pictures::drawDragBike);
    if (!saved) std::fprintf(stderr, "make_pictures: cannot write into %s\n", argv[1]);
    return saved ? 0 : 1;
}
