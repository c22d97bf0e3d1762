#include "guide/forms/guide_browser.h"

#include "guide/chapters.h"

#include <QApplication>
#include <QImage>
#include <QResource>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextFrame>
#include <QTextLayout>
#include <QTextTable>
#include <QUrl>

#include <utility>

// The guide lies in a library, from which a linker takes only what is asked for.
static void takeGuideAlong() {
    Q_INIT_RESOURCE(guide);
}

namespace kvo::forms {

namespace {

constexpr int widestPicture = 660;
constexpr int leastPicture = 200;

QByteArray bytesInProgram(const QString& name) {
    return QResource(QStringLiteral(":/guide/") + name).uncompressedData();
}

// Markdown has no names for its headings; the toolkit gives them none either.
void nameHeadings(QTextDocument& page) {
    for (QTextBlock block = page.begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() == 0) continue;
        QTextCursor heading(block);
        heading.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        QTextCharFormat name;
        name.setAnchor(true);
        name.setAnchorNames({QString::fromStdString(guide::anchorOf(block.text().toStdString()))});
        heading.mergeCharFormat(name);
    }
}

void drawTables(QTextDocument& page) {
    const auto frames = page.rootFrame()->childFrames();
    for (QTextFrame* frame : frames) {
        auto* table = qobject_cast<QTextTable*>(frame);
        if (table == nullptr) continue;
        QTextTableFormat format = table->format();
        format.setBorder(1);
        format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        format.setBorderBrush(QApplication::palette().mid());
        format.setBorderCollapse(true);
        format.setCellPadding(4);
        format.setCellSpacing(0);
        table->setFormat(format);
    }
}

// A dark desktop may leave the links as dark as they are on a light one.
void brightenLinks(QTextDocument& page) {
    const QPalette palette = QApplication::palette();
    if (palette.base().color().lightness() > 127 || palette.link().color().lightness() > 127)
        return;
    for (QTextBlock block = page.begin(); block.isValid(); block = block.next()) {
        for (const QTextLayout::FormatRange& range : block.textFormats()) {
            if (range.format.anchorHref().isEmpty()) continue;
            QTextCursor link(block);
            link.setPosition(block.position() + range.start);
            link.setPosition(link.position() + range.length, QTextCursor::KeepAnchor);
            QTextCharFormat bright;
            bright.setForeground(QColor(0x7F, 0xB8, 0xFF));
            link.mergeCharFormat(bright);
        }
    }
}

QString pageOf(const QString& markdown) {
    QTextDocument page;
    page.setDefaultFont(QApplication::font());
    page.setMarkdown(markdown);
    nameHeadings(page);
    drawTables(page);
    brightenLinks(page);
    return page.toHtml();
}

} // namespace

// The bar is needed on every page; as it comes and goes it would change the room beside it.
GuideBrowser::GuideBrowser() : m_room(widestPicture) {
    takeGuideAlong();
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
}

void GuideBrowser::listCommands(std::vector<guide::WindowCommands> commands) {
    m_commands = std::move(commands);
}

QUrl GuideBrowser::address(const QString& page, const QString& anchor) {
    QUrl url(QStringLiteral("kvo:/") + page);
    if (!anchor.isEmpty()) url.setFragment(anchor);
    return url;
}

QString GuideBrowser::markdown(const QString& page) const {
    if (page == QLatin1String("keyboard"))
        return QString::fromStdString(guide::keyboardPage(m_commands));
    if (page == QLatin1String("commands"))
        return QString::fromStdString(guide::commandsPage(m_commands));
    return page.endsWith(QLatin1String(".md")) ? QString::fromUtf8(bytesInProgram(page))
                                               : QString();
}

QVariant GuideBrowser::loadResource(int type, const QUrl& name) {
    const QString path = name.path().mid(1);
    if (type != QTextDocument::ImageResource) return pageOf(markdown(path));
    QImage& fitting = m_fitting[path];
    if (fitting.isNull()) fitting = fittingPicture(path);
    return fitting;
}

QImage GuideBrowser::fittingPicture(const QString& path) const {
    QImage picture = QImage::fromData(bytesInProgram(path));
    if (picture.width() <= m_room) return picture;
    const int width = qMin(picture.width(), qRound(m_room * devicePixelRatioF()));
    QImage fitting = picture.scaledToWidth(width, Qt::SmoothTransformation);
    fitting.setDevicePixelRatio(width / qreal(m_room));
    return fitting;
}

int GuideBrowser::roomForPictures() const {
    const int margins = static_cast<int>(2 * document()->documentMargin()) + 1;
    return qBound(leastPicture, viewport()->width() - margins, widestPicture);
}

// What stood at the top stays there.
void GuideBrowser::fitPictures() {
    m_fitting.clear();
    const QTextCursor top = cursorForPosition({0, 0});
    const int before = cursorRect(top).top();
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const QTextCharFormat format = part.fragment().charFormat();
            if (!format.isImageFormat()) continue;
            const QUrl name = document()->baseUrl().resolved(format.toImageFormat().name());
            constexpr auto picture = QTextDocument::ImageResource;
            document()->addResource(picture, name, loadResource(picture, name));
        }
    }
    document()->markContentsDirty(0, document()->characterCount());
    QScrollBar& bar = *verticalScrollBar();
    bar.setValue(bar.value() + cursorRect(top).top() - before);
}

void GuideBrowser::resizeEvent(QResizeEvent* event) {
    QTextBrowser::resizeEvent(event);
    if (roomForPictures() != std::exchange(m_room, roomForPictures())) fitPictures();
}

// By its name a page would be taken for Markdown once more. The history keeps whole addresses.
void GuideBrowser::doSetSource(const QUrl& url, QTextDocument::ResourceType) {
    QTextBrowser::doSetSource(source().resolved(url), QTextDocument::HtmlResource);
}

} // namespace kvo::forms
