// Makes the pictures of the guide from the real windows, without a display.
#include "picture_file.h"
#include "platform/qt/application.h"
#include "scenes.h"
#include "tools/command_line/command_line.h"

#include <QCursor>
#include <QDir>
#include <QFile>
#include <QFont>
#include <QStyle>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <string>

using namespace kvo;
using namespace kvo::guide_pictures;

namespace {

int failed(const QString& text) {
    std::fprintf(stderr, "guide_pictures: %s\n", qPrintable(text));
    return 1;
}

// A screen of one size on every machine, and nothing of its desktop.
bool makeScreen(const QTemporaryDir& scratch) {
    QFile screen(scratch.filePath(QStringLiteral("screen.json")));
    const QByteArray text =
        "{\"screens\":[{\"name\":\"guide\",\"x\":0,\"y\":0,\"width\":1600,\"height\":1200,"
        "\"logicalDpi\":96,\"logicalBaseDpi\":96,\"dpr\":1}]}\n";
    if (!screen.open(QIODevice::WriteOnly) || screen.write(text) != text.size()) return false;
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + QFile::encodeName(screen.fileName()));
    for (const char* name : {"QT_QPA_PLATFORMTHEME", "QT_STYLE_OVERRIDE", "QT_SCALE_FACTOR",
             "QT_SCREEN_SCALE_FACTORS", "QT_FONT_DPI"})
        qunsetenv(name);
    return true;
}

// One look, and nothing that blinks.
void settleLook(QApplication& application) {
    platform_qt::prepareApplication(application);
    application.setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    QApplication::setPalette(QApplication::style()->standardPalette());
    QApplication::setCursorFlashTime(0);
    QCursor::setPos(1599, 1199);
}

std::string fillFolder(const std::string& folder) {
    const auto filled = Stage(folder).fillFolder();
    return filled ? std::string() : filled.message;
}

// A form that waits for somebody who is not there would wait for ever.
void endInTime() {
    constexpr int patienceMs = 100'000;
    QTimer::singleShot(
        patienceMs, qApp, [] { std::exit(failed(QStringLiteral("it took too long"))); });
}

// Each scene has the program to itself.
int play(const std::string& folder, const QDir& pictures, bool compare) {
    int result = 0;
    for (const Scene& scene : scenes()) {
        Stage stage(folder);
        const QString name = QLatin1String(scene.file);
        const QImage picture = scene.play(stage);
        if (picture.isNull()) return failed(name + QStringLiteral(": the window did not come"));
        const QString path = pictures.filePath(name);
        if (!compare) {
            if (!write(picture, path)) return failed(path + QStringLiteral(" cannot be written"));
            continue;
        }
        const QString what = difference(picture, path);
        if (!what.isEmpty()) result = failed(path + QStringLiteral(": ") + what);
    }
    return result;
}

} // namespace

int main(int argc, char* argv[]) {
    const command_line::Syntax syntax{"guide_pictures [--compare] FOLDER",
        "Writes the pictures of the user guide into FOLDER, from the windows of the\n"
        "program and without a display. With --compare it only looks whether those\n"
        "that are there show what the windows show; if not, the exit code is 1.\n",
        1, 1, {"--compare"}};
    const auto arguments = command_line::read(syntax, argc, argv);
    if (arguments.exitCode) return *arguments.exitCode;
    const QDir pictures(QString::fromLocal8Bit(arguments.operands[0].c_str()));
    if (!pictures.exists())
        return command_line::misuse(syntax, "there is no folder " + arguments.operands[0]);
    const QTemporaryDir scratch;
    if (!scratch.isValid() || !makeScreen(scratch))
        return failed(QStringLiteral("there is no room for temporary files"));
    platform_qt::Application application(argc, argv);
    settleLook(application);
    endInTime();
    const bool compare = arguments.has("--compare");
    const std::string folder = QFile::encodeName(scratch.path()).toStdString();
    if (const std::string problem = fillFolder(folder); !problem.empty())
        return failed(QString::fromStdString(problem));
    const int result = play(folder, QDir(pictures.absolutePath()), compare);
    if (result != 0 && compare) failed(QStringLiteral("make them anew with script/pictures"));
    return result;
}
