#include "setup/forms/custom_scale.h"

#include "core/shared_state.h"
#include "platform/qt/form_kit.h"
#include "platform/services.h"
#include "setup/graph_options.h"

#include <QLabel>
#include <QPushButton>
#include <QSlider>

namespace kvo::forms {

using namespace platform_qt;

CustomScale::CustomScale() {
    setObjectName(QStringLiteral("CustomScale"));
    setWindowTitle(QStringLiteral("Custom Scale"));
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(12);
    Slider1 = makeSlider(*grid, QStringLiteral("&Height :"), "Slider1", 4);
    Slider2 = makeSlider(*grid, QStringLiteral("&Width :"), "Slider2", 5);
    const setup::CustomScaleValues values = setup::loadCustomScale(core::state().Config);
    Slider1->setValue(values.Slider1);
    Slider2->setValue(values.Slider2);
    auto* ok = named(new QPushButton(QStringLiteral("OK")), "OKButton");
    auto* cancel = named(new QPushButton(QStringLiteral("Cancel")), "CancelButton");
    ok->setDefault(true);
    cancel->setAutoDefault(false);
    connect(ok, &QPushButton::clicked, this, &CustomScale::OKButton_Click);
    connect(cancel, &QPushButton::clicked, this, &CustomScale::CancelButton_Click);
    auto* all = column({grid, LayoutPart::room(), row({LayoutPart::room(), ok, cancel})});
    all->setContentsMargins(16, 16, 16, 14);
    all->setSpacing(14);
    setLayout(all);
}

// A slider between its caption and the value it stands at.
QSlider* CustomScale::makeSlider(
    QGridLayout& grid, const QString& caption, const char* name, int label) {
    auto* slider = named(new QSlider(Qt::Horizontal), name);
    slider->setRange(setup::leastCustomScale, setup::mostCustomScale);
    slider->setPageStep(2);
    slider->setTickPosition(QSlider::TicksBelow);
    slider->setTickInterval(1);
    slider->setMinimumWidth(slider->fontMetrics().averageCharWidth() * 40);
    QLabel* value = valueLabel(QStringLiteral("15"));
    value->setObjectName(QStringLiteral("Label1(%1)").arg(label));
    value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    value->setText(QString::number(slider->value()));
    connect(slider, &QSlider::valueChanged, value,
        [value](int position) { value->setText(QString::number(position)); });
    const int line = grid.rowCount();
    grid.addWidget(buddyLabel(caption, slider), line, 0);
    grid.addWidget(slider, line, 1);
    grid.addWidget(value, line, 2);
    grid.addWidget(new QLabel(QStringLiteral("X")), line, 3);
    return slider;
}

std::optional<SizeInTwips> CustomScale::choose(const SizeInTwips& graphInner) {
    m_graphInner = graphInner;
    // The form is gone once it was left.
    const auto answer = m_answer;
    showModal(*this);
    return *answer;
}

void CustomScale::OKButton_Click() {
    const setup::CustomSurface surface = setup::CustomScaleOK({Slider1->value(), Slider2->value()},
        m_graphInner.height, m_graphInner.width, core::state().Config);
    *m_answer = {surface.Width, surface.Height};
    unload<CustomScale>();
}

void CustomScale::CancelButton_Click() {
    unload<CustomScale>();
}

} // namespace kvo::forms
