#include "picture_file.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QHash>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace kvo::guide_pictures {

namespace {

constexpr int mostColours = 256;
constexpr int smallestFile = 100; // of QImageWriter's quality, which PNG turns into a compression
const QString markName = QStringLiteral("Drawn with");

int distance(QRgb one, QRgb other) {
    const int red = qRed(one) - qRed(other);
    const int green = qGreen(one) - qGreen(other);
    const int blue = qBlue(one) - qBlue(other);
    return 3 * red * red + 6 * green * green + blue * blue;
}

// The colours of a picture, the most frequent first.
std::vector<QRgb> coloursOf(const QImage& picture) {
    QHash<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x) ++counts[line[x]];
    }
    std::vector<QRgb> colours;
    for (auto each = counts.keyBegin(); each != counts.keyEnd(); ++each) colours.push_back(*each);
    std::ranges::sort(colours, [&counts](QRgb one, QRgb other) {
        const int first = counts.value(one);
        const int second = counts.value(other);
        return first != second ? first > second : one < other;
    });
    return colours;
}

// Of colours that are no further apart than this the most frequent one.
QList<QRgb> apart(const std::vector<QRgb>& colours, int least) {
    QList<QRgb> kept;
    for (const QRgb colour : colours) {
        const bool near =
            std::ranges::any_of(kept, [=](QRgb other) { return distance(colour, other) <= least; });
        if (!near) kept.push_back(colour);
        if (kept.size() > mostColours) break;
    }
    return kept;
}

// So many that each colour of the picture has one near it.
QList<QRgb> tableFor(const std::vector<QRgb>& colours) {
    QList<QRgb> table = apart(colours, 0);
    for (int least = 4; table.size() > mostColours; least += least / 4)
        table = apart(colours, least);
    return table;
}

uchar nearest(QRgb colour, const QList<QRgb>& table) {
    const auto found =
        std::ranges::min_element(table, {}, [colour](QRgb each) { return distance(colour, each); });
    return static_cast<uchar>(found - table.begin());
}

// How this machine draws letters.
QString drawnWith() {
    QImage letters(400, 60, QImage::Format_Grayscale8);
    letters.fill(Qt::white);
    QPainter painter(&letters);
    painter.setFont(QApplication::font());
    painter.drawText(10, 20, QStringLiteral("Kvo 0123456789 The quick brown fox (60 Mph)"));
    QFont bold = QApplication::font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.drawText(10, 45, QStringLiteral("jumps over the lazy dog, &@#"));
    painter.end();
    QCryptographicHash sum(QCryptographicHash::Sha1);
    for (int y = 0; y < letters.height(); ++y)
        sum.addData(QByteArrayView(letters.constScanLine(y), letters.width()));
    return QStringLiteral("Qt %1, letters %2")
        .arg(QLatin1String(qVersion()), QString::fromLatin1(sum.result().toHex().left(8)));
}

bool alike(int one, int other) {
    return std::abs(one - other) * 5 <= std::max(one, other);
}

} // namespace

QImage inFewColours(const QImage& picture) {
    const QImage source = picture.convertToFormat(QImage::Format_RGB32);
    const std::vector<QRgb> colours = coloursOf(source);
    const QList<QRgb> table = tableFor(colours);
    QHash<QRgb, uchar> places;
    for (const QRgb colour : colours) places[colour] = nearest(colour, table);
    QImage few(source.size(), QImage::Format_Indexed8);
    few.setColorTable(table);
    for (int y = 0; y < source.height(); ++y) {
        const auto* from = reinterpret_cast<const QRgb*>(source.constScanLine(y));
        uchar* to = few.scanLine(y);
        for (int x = 0; x < source.width(); ++x) to[x] = places.value(from[x]);
    }
    return few;
}

bool write(const QImage& picture, const QString& path) {
    QImage few = inFewColours(picture);
    few.setText(markName, drawnWith());
    QImageWriter writer(path, "png");
    writer.setCompression(smallestFile);
    return writer.write(few);
}

QString difference(const QImage& picture, const QString& path) {
    QImageReader reader(path);
    const QImage there = reader.read();
    if (there.isNull()) return reader.errorString();
    if (there.text(markName) != drawnWith()) {
        const bool fits =
            alike(there.width(), picture.width()) && alike(there.height(), picture.height());
        return fits ? QString() : QStringLiteral("the window has another size");
    }
    if (there.size() != picture.size()) return QStringLiteral("the window has another size");
    const bool same = there.convertToFormat(QImage::Format_RGB32) ==
                      inFewColours(picture).convertToFormat(QImage::Format_RGB32);
    return same ? QString() : QStringLiteral("the window looks different");
}

} // namespace kvo::guide_pictures
