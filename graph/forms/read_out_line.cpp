#include "graph/forms/read_out_line.h"

#include "graph/layout.h"
#include "platform/qt/application.h"
#include "platform/qt/form_kit.h"

#include <QFontMetrics>

namespace kvo::forms {

using namespace platform_qt;

namespace {

constexpr int patienceMs = 100;

void placeInLine(QWidget& widget, const graph::BoxPx& box) {
    widget.setGeometry(box.left, box.top, box.width, box.height);
}

// A pixel more than the letters, which some of them lean over.
int titleWidth(const QFontMetrics& metrics, const QString& title) {
    return title.isEmpty() ? 0 : metrics.horizontalAdvance(title) + 1;
}

void showTitle(QLabel& label, const QString& title, const graph::BoxPx& box) {
    placeInLine(label, box);
    label.setText(label.fontMetrics().elidedText(title, Qt::ElideMiddle, box.width));
    label.setToolTip(plainTip(title));
    label.setAccessibleName(title);
    label.setVisible(!title.isEmpty());
}

} // namespace

ReadOutLine::ReadOutLine(QWidget* parent)
    : QWidget(parent), LoggerTime(named(new QLabel(this), "LoggerTime")),
      ReferenceTime(named(new QLabel(this), "ReferenceTime")),
      Label_DataChanel(named(new QLabel(this), "Label_DataChanel")),
      RunTitle(named(new QLabel(this), "RunTitle")),
      OverlayTitle(named(new QLabel(this), "OverlayTitle")),
      LoadingFrame(named(new QWidget(this), "LoadingFrame")),
      LoadingText(named(new QLabel(LoadingFrame), "LoadingText")),
      LoadingFile(named(new QLabel(LoadingFrame), "LoadingFile")),
      ProgressBar1(named(new QProgressBar(LoadingFrame), "ProgressBar1")) {
    for (QLabel* label : {LoggerTime, ReferenceTime, Label_DataChanel, RunTitle, OverlayTitle,
             LoadingText, LoadingFile}) {
        label->setTextFormat(Qt::PlainText);
        label->setFont(tabularFont());
    }
    QFont bold = LoggerTime->font();
    bold.setBold(true);
    LoggerTime->setFont(bold);
    ReferenceTime->setFont(bold);
    for (QLabel* empty : {LoggerTime, ReferenceTime, Label_DataChanel}) empty->hide();
    ProgressBar1->setAccessibleName(QStringLiteral("Loading"));
    ProgressBar1->setTextVisible(false);
    LoadingFrame->setAutoFillBackground(true); // it covers the titles
    LoadingFrame->hide();
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize ReadOutLine::minimumSizeHint() const {
    return {graph::leastReadOutPx, fontMetrics().height() + graph::cellPaddingPx};
}

void ReadOutLine::showTime(const QString& text) {
    LoggerTime->setText(text);
    LoggerTime->setVisible(!text.isEmpty());
}

void ReadOutLine::showPointer(const QString& text, bool inLine) {
    m_pointerText = text;
    m_pointerInLine = inLine;
    Label_DataChanel->setText(text);
    Label_DataChanel->setVisible(inLine && !text.isEmpty());
    if (inLine && Label_DataChanel->sizeHint().width() > Label_DataChanel->width()) place();
}

void ReadOutLine::showTitles(const QString& run, const QString& overlay) {
    m_runTitle = run;
    m_overlayTitle = overlay.isEmpty() ? overlay : QStringLiteral("Overlay: ") + overlay;
    place();
}

void ReadOutLine::showReference(const std::optional<QString>& text) {
    ReferenceTime->setText(text.value_or(QString()));
    if (text.has_value() != ReferenceTime->isHidden()) return;
    ReferenceTime->setVisible(text.has_value());
    place();
}

void ReadOutLine::startLoading(const QString& text, const QString& file) {
    LoadingText->setText(text);
    LoadingFile->setText(file);
    m_loading.start();
}

void ReadOutLine::setProgressMax(int maximum) {
    ProgressBar1->setValue(0);
    ProgressBar1->setMaximum(maximum);
}

void ReadOutLine::setProgress(int value) {
    ProgressBar1->setValue(qBound(0, value, ProgressBar1->maximum()));
    if (!LoadingFrame->isHidden() || m_loading.elapsed() < patienceMs) return;
    place();
    LoadingFrame->show();
    LoadingFrame->repaint();
}

void ReadOutLine::endLoading() {
    LoadingFrame->hide();
}

void ReadOutLine::resizeEvent(QResizeEvent*) {
    place();
}

graph::ReadOutWidths ReadOutLine::textWidths() const {
    const QFontMetrics bold(LoggerTime->font());
    const QFontMetrics plain(RunTitle->font());
    graph::ReadOutWidths texts;
    texts.timePx = bold.horizontalAdvance(QStringLiteral("Time:-00.00 / -00.00 "));
    if (!ReferenceTime->isHidden())
        texts.betweenPx = bold.horizontalAdvance(QStringLiteral("Reference: -00.00 sec "));
    if (graph::pointerHasLabel(toTwips(window()->width())))
        texts.pointerPx =
            qMax(plain.horizontalAdvance(QStringLiteral(" Overlay Exhaust Temp 0 = 0000 ")),
                Label_DataChanel->sizeHint().width());
    texts.runTitlePx = titleWidth(plain, m_runTitle);
    texts.overlayTitlePx = titleWidth(plain, m_overlayTitle);
    texts.loadingTextPx = LoadingText->sizeHint().width();
    texts.loadingFilePx = LoadingFile->sizeHint().width();
    return texts;
}

void ReadOutLine::place() {
    const graph::ReadOutPlaces places = graph::readOutPlaces(width(), height(), textWidths());
    placeInLine(*LoggerTime, places.time);
    placeInLine(*ReferenceTime, places.between);
    placeInLine(*Label_DataChanel, places.pointer);
    showTitle(*RunTitle, m_runTitle, places.runTitle);
    showTitle(*OverlayTitle, m_overlayTitle, places.overlayTitle);
    placeInLine(*LoadingFrame, places.loading);
    placeInLine(*LoadingText, places.loadingText);
    placeInLine(*LoadingFile, places.loadingFile);
    placeInLine(*ProgressBar1, places.progress);
}

} // namespace kvo::forms
