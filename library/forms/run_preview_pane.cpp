#include "library/forms/run_preview_pane.h"

#include "core/forms/doors.h"
#include "core/run_info.h"
#include "library/run_facts.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/text.h"
#include "platform/services.h"

#include <QImage>
#include <QLabel>
#include <QPixmap>

#include <utility>

namespace kvo::forms {

using namespace platform_qt;

namespace {

constexpr int restMs = 150;
constexpr int pictureWidth = 270;
constexpr int pictureHeight = 160;
constexpr int textLines = 10;

QPixmap pixmapOf(const core::RunPicture& picture, qreal ratio) {
    const QImage lines(reinterpret_cast<const uchar*>(picture.pixels.data()), picture.widthPx,
        picture.heightPx, picture.widthPx * 4, QImage::Format_RGB32);
    // The pixels go with the picture, and a pixmap may keep those of its image.
    QPixmap pixmap = QPixmap::fromImage(lines.copy());
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

} // namespace

RunPreviewPane::RunPreviewPane(const char* name) {
    setObjectName(QLatin1String(name));
    m_rest.setSingleShot(true);
    connect(&m_rest, &QTimer::timeout, this, &RunPreviewPane::showRun);
    m_picture = named(plainLabel({}), "Preview_Picture");
    m_picture->setAccessibleName(QStringLiteral("Picture of the run"));
    m_picture->setFrameShape(QFrame::StyledPanel);
    m_picture->setAlignment(Qt::AlignCenter);
    m_picture->setWordWrap(true);
    const int frame = 2 * m_picture->frameWidth();
    m_picture->setFixedSize(pictureWidth + frame, pictureHeight + frame);
    m_text = named(plainLabel({}), "Preview_Text");
    m_text->setAccessibleName(QStringLiteral("Times and notes of the run"));
    m_text->setWordWrap(true);
    m_text->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_text->setMinimumHeight(m_text->fontMetrics().lineSpacing() * textLines);
    m_text->setFixedWidth(m_picture->width());
    QVBoxLayout* all = column({m_picture, {m_text, 1}});
    all->setContentsMargins(0, 0, 0, 0);
    setLayout(all);
}

void RunPreviewPane::follow(std::optional<core::ChosenRun> run) {
    m_run = std::move(run);
    if (m_run) return m_rest.start(restMs);
    m_rest.stop();
    m_picture->clear();
    m_text->clear();
}

void RunPreviewPane::showRun() {
    showPicture(m_run->path);
    QStringList lines;
    for (const std::string& line :
        library::previewLines(core::readRunNotes(m_run->infoPath, *platform::services().files)))
        lines << shown(line);
    m_text->setText(lines.join(QLatin1Char('\n')));
}

void RunPreviewPane::showPicture(const std::string& path) {
    const qreal ratio = devicePixelRatioF();
    const core::RunPicture picture =
        doors().runPreview(path, qRound(pictureWidth * ratio), qRound(pictureHeight * ratio));
    m_picture->clear();
    if (picture.pixels.empty()) return m_picture->setText(shownMessage(picture.problem));
    m_picture->setPixmap(pixmapOf(picture, ratio));
}

} // namespace kvo::forms
