#include "graph/forms/print_progress.h"

#include "platform/qt/form_kit.h"

#include <QProgressDialog>

namespace kvo::forms {

using namespace platform_qt;

namespace {

constexpr int shownAfterMs = 300; // a shorter job would only flicker

} // namespace

PrintProgress::PrintProgress(QWidget* window) : m_window(window) {}

PrintProgress::~PrintProgress() = default;

bool PrintProgress::goesOn(int pagesDone, int allPages) {
    const Waiting waiting;
    if (!m_box) {
        m_box = std::make_unique<QProgressDialog>(m_window);
        m_box->setObjectName(QStringLiteral("PrintProgress"));
        m_box->setWindowTitle(QStringLiteral("Print"));
        m_box->setWindowModality(Qt::WindowModal);
        m_box->setMinimumDuration(shownAfterMs);
        m_box->setAutoClose(false);
        m_box->setAutoReset(false);
        m_box->setRange(0, allPages);
        m_box->setValue(0);
    }
    m_box->setLabelText(QStringLiteral("Page %1 of %2").arg(pagesDone).arg(allPages));
    m_box->setValue(pagesDone);
    return !m_box->wasCanceled();
}

} // namespace kvo::forms
