#pragma once
// The graph window as a test works with it: a program with runs on its disk, the window opened on
// one of them, its parts by name, places on its surface, and what the user does in the chooser.
#include "core/open_run.h"
#include "graph/forms/data_graph.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/surface_widget.h"
#include "tests/forms/support/test_program.h"

#include <QAction>
#include <QImage>
#include <QLabel>
#include <QMap>
#include <QSet>
#include <QSize>

#include <functional>
#include <memory>
#include <string>

namespace kvo::testing {

// A test class inherits it beside QObject, and calls begin() in init() and end() in cleanup().
class GraphWindow {
protected:
    void begin();
    // Takes the windows away. What went wrong in scripted dialogs; empty where all is well.
    QString end();

    core::SharedState& state() { return m_program->state; }
    MemoryFiles& files() { return m_program->files; }
    ScriptedDialogs& dialogs() { return m_program->dialogs; }
    TestProgram& program() { return *m_program; }

    // The window on a fresh run of a type, as behind a download.
    forms::DataGraph& open(int dataType, QSize size = {1366, 768});
    // The same on the run file that the state names.
    forms::DataGraph& openFresh(QSize size = {1366, 768});
    // The chooser comes up over a window without a run; what `script` does there, the user does.
    forms::DataGraph& openByChooser(std::function<void(QWidget*)> script, QSize size = {1366, 768});
    // Brings the window to the front and gives it the keys.
    forms::DataGraph& show(QSize size = {1366, 768});

    template <class W> W& part(const char* name) {
        return platform_qt::control<W>(platform_qt::form<forms::DataGraph>(), name);
    }
    QString text(const char* label) { return part<QLabel>(label).text(); }
    platform_qt::SurfaceWidget& trend() { return part<platform_qt::SurfaceWidget>("Trend"); }
    QAction& command(const char* name) { return part<QAction>(name); }
    bool menuEnabled(const char* name);
    const platform::DisplayList& kept() { return trend().surface().kept(); }
    // Operations of the time line or of the mark of an average.
    std::size_t onTop() { return trend().surface().upper().size(); }
    // The place of a sample and a height on Trend, logical pixels.
    QPoint place(float x, float y);
    // Clicks as a user does; fails the test where a user could not.
    void press(const char* name);

    // A run file as it is on the disk; the test ends where it does not load.
    core::OpenRun loaded(const std::string& path);

    static void chooseRow(QWidget* chooser, int row);
    static void pressIn(QWidget* dialog, const char* button);
    // Scripts for the chooser: OK on a row, on a file, on the run of a number (1 to 9); Cancel.
    static std::function<void(QWidget*)> takingRow(int row);
    static std::function<void(QWidget*)> takingFile(const std::string& fileName);
    static std::function<void(QWidget*)> taking(int number);
    static std::function<void(QWidget*)> cancelling();

    const graph::GraphView& view() { return platform_qt::form<forms::DataGraph>().view(); }
    // A run of a type with its line in the index; number 1 to 9. The highest number is the newest.
    void store(int type, int number);
    static std::string pathOf(int number);
    // Writes the run of the state as it is now.
    void saveRun();
    // The configuration as the window has left it on the disk.
    core::AppConfig savedConfig();
    // All channels off but the one, so that its curves are all there is.
    void onlyChannel(int channel);
    // Lays a run over the one in the window; another type is agreed to.
    void overlay(int number);
    // The window on run 2 with run 1 over it.
    forms::DataGraph& openOverlaid(QSize size = {1366, 768});

    // The surface as a picture with a pixel a sample and a unit.
    QImage picture();
    // Its pixels of a colour, from a sample on.
    int pixels(QRgb colour, int fromSample = 0);
    // What all labels of values and the time read, by their names.
    QMap<QString, QString> texts();
    int filledExhausts();
    // The pointer and the left button at an exact place of the surface.
    void pointAt(float sample, float height);
    void pointAtTheEngine(int sample = 500);
    void clickAt(float sample);
    // All that the pointer finds on its way up a sample.
    QSet<QString> hitsAt(float sample);
    // Takes the time line away.
    void wipe() { trend().surface().refresh(); }
    void chooseBackground(platform::Colour colour);

private:
    std::unique_ptr<TestProgram> m_program;
};

} // namespace kvo::testing
