#pragma once
// CustomScale: how many windows high and wide the surface of the graph is to be.
#include "core/forms/doors.h"

#include <QDialog>

#include <memory>
#include <optional>

class QGridLayout;
class QLabel;
class QSlider;

namespace kvo::forms {

class CustomScale : public QDialog {
    Q_OBJECT

public:
    CustomScale();

    // Shows the form over a graph of such an inner size. The size that its surface is to have; none
    // where the form was left by Cancel.
    std::optional<SizeInTwips> choose(const SizeInTwips& graphInner);

protected:
    void reject() override { CancelButton_Click(); }

private:
    QSlider* makeSlider(QGridLayout& grid, const QString& caption, const char* name, int label);
    void OKButton_Click();
    void CancelButton_Click();

    SizeInTwips m_graphInner;
    std::shared_ptr<std::optional<SizeInTwips>> m_answer =
        std::make_shared<std::optional<SizeInTwips>>();
    QSlider* Slider1 = nullptr;
    QSlider* Slider2 = nullptr;
};

} // namespace kvo::forms
