#include "mainwin/about.h"

#include "mainwin/product.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/icons.h"

#include <QLabel>
#include <QPushButton>

namespace kvo::forms {

using namespace platform_qt;

About::About() {
    setObjectName(QStringLiteral("About"));
    setWindowTitle(QStringLiteral("About KVO"));
    auto* picture = named(new QLabel, "Picture");
    picture->setAccessibleName(QStringLiteral("Picture of the vehicle"));
    picture->setAlignment(Qt::AlignCenter);
    picture->setPixmap(fitted(vehiclePicture(), {360, 200}, devicePixelRatioF()));
    auto* name = named(new QLabel(QStringLiteral("KVO")), "Label_Name");
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 2);
    large.setBold(true);
    name->setFont(large);
    auto* what = new QLabel(QStringLiteral("Data acquisition for drag racing"));
    auto* version = named(new QLabel(versionText()), "Label_Version");
    auto* licence = named(new QLabel(licenceText()), "Label_Licence");
    auto* toolkit = named(new QLabel(toolkitText()), "Label_Toolkit");
    auto* close = named(new QPushButton(QStringLiteral("&Close")), "Command1");
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, &About::Command1_Click);
    for (QLabel* label : {name, what, version, licence, toolkit})
        label->setAlignment(Qt::AlignHCenter);
    auto* all = column({picture, name, what, version, licence, toolkit,
        row({LayoutPart::room(), close, LayoutPart::room()})});
    all->setContentsMargins(28, 20, 28, 20);
    all->setSpacing(8);
    setLayout(all);
}

void About::Command1_Click() {
    unload<About>();
}

void About::reject() {
    Command1_Click();
}

} // namespace kvo::forms
