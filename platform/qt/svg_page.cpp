#include "platform/qt/svg_page.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QXmlStreamWriter>

namespace kvo::platform_qt {
namespace {

QString numberText(qreal value) {
    return QString::number(value, 'g', 9);
}

// What XML cannot hold, such as a control character of a run's title, is left out.
QString asXml(const QString& text) {
    QString kept;
    for (const QChar c : text)
        if (c.unicode() >= 0x20 && c.unicode() < 0xFFFE && !c.isSurrogate()) kept += c;
    return kept;
}

class SvgWriter {
public:
    explicit SvgWriter(QXmlStreamWriter& xml) : m_xml(xml) {}

    void operator()(const PageLine& line) {
        m_xml.writeEmptyElement(QStringLiteral("polyline"));
        QString points;
        for (const QPointF& point : line.points)
            points +=
                numberText(point.x()) + QLatin1Char(',') + numberText(point.y()) + QLatin1Char(' ');
        points.chop(1);
        attribute("points", points);
        attribute("fill", QStringLiteral("none"));
        attribute("stroke", line.colour.name());
        attribute("stroke-width", numberText(line.widthPx));
        attribute("stroke-linejoin", QStringLiteral("round"));
        QString dashes;
        for (const qreal part : dashesOf(line.drawStyle))
            dashes += numberText(part * line.widthPx) + QLatin1Char(' ');
        if (dashes.isEmpty()) {
            attribute("stroke-linecap", QStringLiteral("round"));
        } else {
            attribute("stroke-dasharray", dashes.trimmed());
        }
    }
    void operator()(const PageBox& box) {
        m_xml.writeEmptyElement(QStringLiteral("rect"));
        place(box.place);
        attribute("fill", box.colour.name());
    }
    void operator()(const PageText& text) {
        const QString letters = asXml(text.text);
        if (letters.trimmed().isEmpty()) return;
        m_xml.writeStartElement(QStringLiteral("text"));
        attribute("x", numberText(text.baseLine.x()));
        attribute("y", numberText(text.baseLine.y()));
        attribute("fill", text.colour.name());
        attribute("font-family", text.font.family() + QStringLiteral(", sans-serif"));
        attribute("font-size", QString::number(text.font.pixelSize()));
        attribute("textLength", numberText(QFontMetricsF(text.font).horizontalAdvance(letters)));
        attribute("lengthAdjust", QStringLiteral("spacingAndGlyphs"));
        attribute("xml:space", QStringLiteral("preserve"));
        m_xml.writeCharacters(letters);
        m_xml.writeEndElement();
    }
    void operator()(const PageImage&) {}
    void operator()(const PageClip& clip) {
        endClip();
        if (clip.place.isEmpty()) return;
        const QString name = QStringLiteral("part%1").arg(++m_clips);
        m_xml.writeStartElement(QStringLiteral("clipPath"));
        attribute("id", name);
        m_xml.writeEmptyElement(QStringLiteral("rect"));
        place(clip.place);
        m_xml.writeEndElement();
        m_xml.writeStartElement(QStringLiteral("g"));
        attribute("clip-path", QStringLiteral("url(#%1)").arg(name));
        m_inClip = true;
    }

    void begin(const QSize& pagePx, const QSize& shownPx, const QString& title) {
        m_xml.writeStartElement(QStringLiteral("svg"));
        attribute("xmlns", QStringLiteral("http://www.w3.org/2000/svg"));
        attribute("width", QString::number(shownPx.width()));
        attribute("height", QString::number(shownPx.height()));
        attribute("viewBox", QStringLiteral("0 0 %1 %2").arg(pagePx.width()).arg(pagePx.height()));
        m_xml.writeTextElement(QStringLiteral("title"), asXml(title));
        (*this)(PageBox{QRectF(QPointF(), QSizeF(pagePx)), Qt::white});
    }
    void endClip() {
        if (m_inClip) m_xml.writeEndElement();
        m_inClip = false;
    }

private:
    void attribute(const char* name, const QString& value) {
        m_xml.writeAttribute(QLatin1String(name), value);
    }
    void place(const QRectF& rect) {
        attribute("x", numberText(rect.x()));
        attribute("y", numberText(rect.y()));
        attribute("width", numberText(rect.width()));
        attribute("height", numberText(rect.height()));
    }

    QXmlStreamWriter& m_xml;
    int m_clips = 0;
    bool m_inClip = false;
};

} // namespace

platform::Bytes svgOf(
    const PageDrawing& page, const QSize& pagePx, const QSize& shownPx, const QString& title) {
    QBuffer content;
    content.open(QIODevice::WriteOnly);
    QXmlStreamWriter xml(&content);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(1);
    xml.writeStartDocument();
    SvgWriter svg(xml);
    svg.begin(pagePx, shownPx, title);
    for (const PageOperation& operation : page) std::visit(svg, operation);
    svg.endClip();
    xml.writeEndDocument();
    return {content.data().begin(), content.data().end()};
}

} // namespace kvo::platform_qt
