#include "mainwin/product.h"

#include "core/paths.h"
#include "core/shared_state.h"
#include "core/start.h"
#include "platform/qt/icons.h"
#include "platform/services.h"

namespace kvo::forms {

QString versionText() {
    return QStringLiteral("Version " KVO_VERSION);
}

std::string versionNumbers() {
    return KVO_VERSION;
}

QString licenceText() {
    return QStringLiteral("No licence has been granted yet for Kvo.");
}

QString toolkitText() {
    return QStringLiteral("Made with Qt %1, which is under the\n"
                          "GNU Lesser General Public License, version 3.")
        .arg(QLatin1String(qVersion()));
}

std::string makersPage() {
    return "https://kvo.example";
}

std::string updatePage() {
    return makersPage() + "/update";
}

QPixmap vehiclePicture() {
    const core::SharedState& state = core::state();
    const platform::Files& files = *platform::services().files;
    const auto content =
        files.read(core::joined(state.AppFolder, core::vehiclePictureName(state.Config), files));
    return content ? platform_qt::imageFromBytes(*content) : QPixmap();
}

} // namespace kvo::forms
