#pragma once
// The program with everything around it, on which the scenes of the guide are shown: a folder with
// the runs of the race days, a clock that stands, a modelled logger at the port, and nobody who
// answers questions.
#include "core/open_run.h"
#include "link/logger_link.h"
#include "model_port.h"
#include "platform/clock.h"
#include "platform/os/os_files.h"
#include "platform/settings.h"
#include "platform/unanswered_dialogs.h"

#include <QImage>
#include <QSize>

#include <functional>
#include <string>
#include <vector>

class QWidget;

namespace kvo::forms {
class DataGraph;
}

namespace kvo::guide_pictures {

class RaceDayClock : public platform::Clock {
public:
    platform::DateTime now() const override { return {2026, 11, 15, 16, 30, 0}; }
};

class NoSettings : public platform::Settings {
public:
    std::vector<std::string> list(const std::string&) const override { return {}; }
    void setList(const std::string&, const std::vector<std::string>&) override {}
};

class Stage {
public:
    // There is one stage at a time.
    explicit Stage(const std::string& folder);
    ~Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    // Puts the runs into the folder, for this stage and all behind it.
    [[nodiscard]] platform::WriteResult fillFolder();
    ModelPort& port() { return m_port; }

    // The window and the menus that are open over it, with a thin frame around, as soon as it has
    // shown all that it is going to show.
    static QImage picture(QWidget& window);
    // Opens a modal form and runs the script in it; what still stands behind it is left by Escape.
    static void inModal(
        const std::function<void()>& open, const std::function<void(QWidget&)>& script);
    // The same for a picture of the form, behind the script if there is one.
    static QImage pictureOfModal(
        const std::function<void()>& open, const std::function<void(QWidget&)>& script = {});
    // A run by its place in the list of the race days, 0 the first. It is the list's choice then.
    core::ChosenRun runAt(int place) const;
    // The graph window on that run.
    forms::DataGraph& openGraph(int run, QSize size) const;
    // Lays another run over it.
    void layOver(forms::DataGraph& graph, int run) const;

private:
    platform_os::OsFiles m_files;
    RaceDayClock m_clock;
    platform::UnansweredDialogs m_dialogs;
    ModelPort m_port;
    NoSettings m_settings;
    link::LoggerLink m_link{m_port, m_port, m_dialogs};
};

} // namespace kvo::guide_pictures
