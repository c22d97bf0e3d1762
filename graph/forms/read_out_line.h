#pragma once
// The line between surface and channels: the time of the cursor, what lies under the pointer, and
// the loading panel at its right end. Placed without a layout, since its texts change with every
// move of cursor and mouse.
#include <QLabel>
#include <QProgressBar>
#include <QWidget>

namespace kvo::forms {

class ReadOutLine : public QWidget {
    Q_OBJECT

public:
    explicit ReadOutLine(QWidget* parent = nullptr);

    QLabel* const LoggerTime;
    QLabel* const Label_DataChanel;
    QWidget* const LoadingFrame;
    QLabel* const LoadingText;
    QLabel* const LoadingFile;
    QProgressBar* const ProgressBar1;

    QSize sizeHint() const override { return minimumSizeHint(); }
    QSize minimumSizeHint() const override;
    // Shows the loading panel at once, or hides it.
    void showLoading(bool on);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void place();
};

} // namespace kvo::forms
