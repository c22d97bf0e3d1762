#pragma once
// A run at a glance beside a list: a small picture of it, its times and the first line of its
// notes. It is made once a choice has rested, so that nobody waits who runs down a list.
#include "core/open_run.h"

#include <QTimer>
#include <QWidget>

#include <optional>

class QLabel;

namespace kvo::forms {

class RunPreviewPane : public QWidget {
    Q_OBJECT

public:
    explicit RunPreviewPane(const char* name);
    // The run of which it is from now on; none empties it at once.
    void follow(std::optional<core::ChosenRun> run);
    // Nothing more is made of what was asked for.
    void stop() { m_rest.stop(); }

private:
    void showRun();
    void showPicture(const std::string& path);

    std::optional<core::ChosenRun> m_run;
    QTimer m_rest;
    QLabel* m_picture = nullptr;
    QLabel* m_text = nullptr;
};

} // namespace kvo::forms
