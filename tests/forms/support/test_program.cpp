#include "tests/forms/support/test_program.h"

#include "core/config.h"
#include "core/forms/doors.h"
#include "library/run_list.h"
#include "platform/qt/form_kit.h"

#include <QBuffer>
#include <QImage>

namespace kvo::testing {

TestProgram::TestProgram() {
    state = core::SharedState();
    library::runList() = library::RunList();
    state.AppFolder = "/kvo";
    state.ConfigKnown = true;
    state.Config.CommPort = 1;
    state.Config.Vehicle_Type = 1;
    platform::services() = {&guardedFiles, &clock, &dialogs, nullptr, nullptr, &browser, &printer,
        &mail, &folderLock, &showRequests,
        [this](const std::string& folder) { guardedFiles.lookOnlyAt(folder); }, &settings,
        [this](const std::vector<std::string>& words) {
            startedAnew.push_back(words);
            return startsAnew;
        }};
    forms::doors() = forms::Doors();
    // A chooser that stands a moment longer on a busy machine asks for it by itself.
    forms::doors().runPreview = [](const std::string&, int, int) { return core::RunPicture{}; };
}

TestProgram::~TestProgram() {
    platform_qt::unloadAllForms();
    platform::services() = {};
    forms::doors() = forms::Doors();
}

void TestProgram::putConfig() {
    files.put("/kvo/Kvo.Cfg", core::encodeConfig(state.Config));
}

platform::Bytes pictureFile(int width, int height, unsigned colour) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(colour);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return platform::Bytes(bytes.begin(), bytes.end());
}

} // namespace kvo::testing
