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

} // namespace

ReadOutLine::ReadOutLine(QWidget* parent)
    : QWidget(parent), LoggerTime(named(new QLabel(this), "LoggerTime")),
      ReferenceTime(named(new QLabel(this), "ReferenceTime")),
      Label_DataChanel(named(new QLabel(this), "Label_DataChanel")),
      LoadingFrame(named(new QWidget(this), "LoadingFrame")),
      LoadingText(named(new QLabel(LoadingFrame), "LoadingText")),
      LoadingFile(named(new QLabel(LoadingFrame), "LoadingFile")),
      ProgressBar1(named(new QProgressBar(LoadingFrame), "ProgressBar1")) {
    for (QLabel* label : {LoggerTime, ReferenceTime, Label_DataChanel, LoadingText, LoadingFile}) {
        label->setTextFormat(Qt::PlainText);
        label->setFont(tabularFont());
    }
    QFont bold = LoggerTime->font();
    bold.setBold(true);
    LoggerTime->setFont(bold);
    ReferenceTime->setFont(bold);
    ReferenceTime->hide();
    ProgressBar1->setAccessibleName(QStringLiteral("Loading"));
    ProgressBar1->setTextVisible(false);
    LoadingFrame->hide();
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize ReadOutLine::minimumSizeHint() const {
    return {graph::leastReadOutPx, fontMetrics().height() + graph::cellPaddingPx};
}

void ReadOutLine::showPointer(const QString& text, bool inLine) {
    m_pointerText = text;
    m_pointerInLine = inLine;
    Label_DataChanel->setText(text);
    Label_DataChanel->setVisible(inLine);
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

void ReadOutLine::place() {
    const QFontMetrics bold(LoggerTime->font());
    graph::ReadOutWidths texts;
    texts.timePx = bold.horizontalAdvance(QStringLiteral("Time:-00.00 / -00.00 "));
    if (!ReferenceTime->isHidden())
        texts.betweenPx = bold.horizontalAdvance(QStringLiteral("Reference: -00.00 sec "));
    texts.loadingTextPx = LoadingText->sizeHint().width();
    texts.loadingFilePx = LoadingFile->sizeHint().width();
    const graph::ReadOutPlaces places = graph::readOutPlaces(width(), height(), texts);
    placeInLine(*LoggerTime, places.time);
    placeInLine(*ReferenceTime, places.between);
    placeInLine(*Label_DataChanel, places.pointer);
    placeInLine(*LoadingFrame, places.loading);
    placeInLine(*LoadingText, places.loadingText);
    placeInLine(*LoadingFile, places.loadingFile);
    placeInLine(*ProgressBar1, places.progress);
}

} // namespace kvo::forms
