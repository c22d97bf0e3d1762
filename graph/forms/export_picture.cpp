#include "graph/forms/export_picture.h"

#include "graph/export_file.h"
#include "platform/qt/form_kit.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QSpinBox>

namespace kvo::forms {

using namespace platform_qt;

ExportPicture::ExportPicture() {
    setObjectName(QStringLiteral("ExportPicture"));
    Text_Width = makeSide("Text_Width");
    Text_Height = makeSide("Text_Height");
    Label_Width = buddyLabel(QStringLiteral("&Width in pixels:"), Text_Width);
    Label_Height = buddyLabel(QStringLiteral("&Height in pixels:"), Text_Height);
    WhitePaper = named(new QCheckBox(QStringLiteral("White &ground")), "WhitePaper");
    WhitePaper->setToolTip(
        QStringLiteral("Draw the graph on white instead of the colour of the screen's ground"));
    auto* buttons = named(
        new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel), "ExportButtons");
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(8);
    grid->addWidget(Label_Width, 0, 0);
    grid->addWidget(Text_Width, 0, 1);
    grid->addWidget(Label_Height, 1, 0);
    grid->addWidget(Text_Height, 1, 1);
    auto* all = column({grid, WhitePaper, buttons});
    all->setContentsMargins(16, 16, 16, 14);
    all->setSpacing(14);
    all->setSizeConstraint(QLayout::SetFixedSize);
    setLayout(all);
}

QSpinBox* ExportPicture::makeSide(const char* name) {
    auto* side = named(new QSpinBox, name);
    side->setRange(graph::leastPictureSide, graph::mostPictureSide);
    side->setSingleStep(10);
    side->setToolTip(
        QStringLiteral("%1 to %2 pixels").arg(graph::leastPictureSide).arg(graph::mostPictureSide));
    return side;
}

std::optional<PictureLook> ExportPicture::ask(
    const QString& title, bool hasSize, const PictureLook& start) {
    setWindowTitle(title);
    Text_Width->setValue(start.sizePx.width());
    Text_Height->setValue(start.sizePx.height());
    WhitePaper->setChecked(start.whitePaper);
    const std::initializer_list<QWidget*> sides{Label_Width, Text_Width, Label_Height, Text_Height};
    for (QWidget* part : sides) part->setVisible(hasSize);
    const auto answer = m_answer;
    showModal(*this);
    return *answer;
}

void ExportPicture::accept() {
    *m_answer = PictureLook{{Text_Width->value(), Text_Height->value()}, WhitePaper->isChecked()};
    unload<ExportPicture>();
}

void ExportPicture::reject() {
    unload<ExportPicture>();
}

} // namespace kvo::forms
