#pragma once
// The box that a long print job shows after a moment, with its Cancel button.
#include "graph/print_text.h"

#include <memory>

class QProgressDialog;
class QWidget;

namespace kvo::forms {

class PrintProgress : public graph::PrintProgress {
public:
    // The box stands over `window`, which must outlive the job.
    explicit PrintProgress(QWidget* window);
    ~PrintProgress() override;
    PrintProgress(const PrintProgress&) = delete;
    PrintProgress& operator=(const PrintProgress&) = delete;

    // Lets events run where the box is shown.
    bool goesOn(int pagesDone, int allPages) override;

private:
    QWidget* m_window;
    std::unique_ptr<QProgressDialog> m_box; // from the first page on: questions come before it
};

} // namespace kvo::forms
