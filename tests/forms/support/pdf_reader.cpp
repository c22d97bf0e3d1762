#include "tests/forms/support/pdf_reader.h"

#include <QProcess>
#include <QRegularExpression>

namespace kvo::testing {

namespace {

QByteArray outputOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished()) return {};
    return process.exitCode() == 0 ? process.readAllStandardOutput() : QByteArray();
}

QString decoded(QString text) {
    return text.replace(QLatin1String("&lt;"), QLatin1String("<"))
        .replace(QLatin1String("&gt;"), QLatin1String(">"))
        .replace(QLatin1String("&amp;"), QLatin1String("&"));
}

} // namespace

QRectF PdfPage::placeOf(const QString& text) const {
    for (const PdfWord& word : words) {
        if (word.text == text) return word.place;
    }
    return {};
}

std::vector<PdfPage> readPdf(const QString& path) {
    const QString text = QString::fromUtf8(outputOf(
        QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), path, QStringLiteral("-")}));
    static const QRegularExpression element(
        QStringLiteral("<page width=\"([\\d.]+)\" height=\"([\\d.]+)\">|"
                       "<word xMin=\"([-\\d.]+)\" yMin=\"([-\\d.]+)\" xMax=\"([-\\d.]+)\" "
                       "yMax=\"([-\\d.]+)\">([^<]*)</word>"));
    std::vector<PdfPage> pages;
    for (auto all = element.globalMatch(text); all.hasNext();) {
        const QRegularExpressionMatch one = all.next();
        const auto number = [&one](int group) { return one.captured(group).toDouble(); };
        if (!one.captured(1).isEmpty()) {
            pages.push_back({number(1), number(2), {}});
        } else if (!pages.empty()) {
            const QRectF place(QPointF(number(3), number(4)), QPointF(number(5), number(6)));
            pages.back().words.push_back({place, decoded(one.captured(7))});
        }
    }
    return pages;
}

QImage pdfPageImage(const QString& path, int number, int dotsPerInch) {
    const QString page = QString::number(number);
    const QByteArray image = outputOf(QStringLiteral("pdftoppm"),
        {QStringLiteral("-r"), QString::number(dotsPerInch), QStringLiteral("-f"), page,
            QStringLiteral("-l"), page, QStringLiteral("-aa"), QStringLiteral("no"),
            QStringLiteral("-aaVector"), QStringLiteral("no"), path});
    return QImage::fromData(image, "PPM");
}

} // namespace kvo::testing
