#include "mainwin/start.h"

#include "core/config.h"
#include "core/shared_state.h"
#include "core/start.h"
#include "mainwin/main_window.h"
#include "mainwin/software_setup.h"
#include "mainwin/splash.h"
#include "mainwin/toolbar_icons.h"
#include "platform/qt/application.h"
#include "platform/qt/form_kit.h"
#include "platform/services.h"

#include <QApplication>
#include <QIcon>

namespace kvo::forms {

using namespace platform_qt;

bool startProgram() {
    QApplication::setWindowIcon(programIcon());
    platform::Services& services = platform::services();
    if (!core::processorSuffices(processorType, *services.dialogs)) return false;
    core::SharedState& state = core::state();
    state.AppFolder = currentFolder();
    core::LoadConfig(
        state.AppFolder, state.Config, *services.files, *services.dialogs, showSoftwareSetup);
    showModal(form<frmSplash>());
    const bool mayGoOn = form<frmSplash>().LoginSucceeded;
    unload<frmSplash>();
    if (mayGoOn) form<VrnWin32>().show();
    return mayGoOn;
}

} // namespace kvo::forms
