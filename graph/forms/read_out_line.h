#pragma once
// The line between surface and channels: the time of the cursor, what lies under the pointer, which
// runs these are, and the loading panel at its right end. Placed without a layout, since its texts
// change with every move of cursor and mouse.
#include "graph/layout.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QWidget>

#include <optional>

namespace kvo::forms {

class ReadOutLine : public QWidget {
    Q_OBJECT

public:
    explicit ReadOutLine(QWidget* parent = nullptr);

    QLabel* const LoggerTime;
    QLabel* const ReferenceTime;
    QLabel* const Label_DataChanel;
    QLabel* const RunTitle;
    QLabel* const OverlayTitle;
    QWidget* const LoadingFrame;
    QLabel* const LoadingText;
    QLabel* const LoadingFile;
    QProgressBar* const ProgressBar1;

    QSize sizeHint() const override { return minimumSizeHint(); }
    QSize minimumSizeHint() const override;
    // The time of the cursor. A text that is empty has no label, here and below.
    void showTime(const QString& text);
    // The text under the pointer. A narrow window has it elsewhere, and the line none.
    void showPointer(const QString& text, bool inLine);
    // The time from a reference to the cursor; none while there is no reference.
    void showReference(const std::optional<QString>& text);
    // Which run this is, and which lies over it; empty where there is none. What has no room is
    // left out in the middle, and the whole stands in a tool tip.
    void showTitles(const QString& run, const QString& overlay);
    const QString& pointerText() const { return m_pointerText; }
    bool pointerStandsInLine() const { return m_pointerInLine; }
    // The loading panel. It comes up with the first progress a tenth of a second after the start,
    // so that a long drawing shows it and a short one is not slowed by painting it.
    void startLoading(const QString& text, const QString& file);
    void setProgressMax(int maximum);
    // A value above the maximum leaves the bar full.
    void setProgress(int value);
    void endLoading();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void place();
    graph::ReadOutWidths textWidths() const;

    QElapsedTimer m_loading;
    QString m_pointerText;
    QString m_runTitle;
    QString m_overlayTitle;
    bool m_pointerInLine = true;
};

} // namespace kvo::forms
