#pragma once
// A user without a display: presses real buttons of real windows, each as soon as it comes up, and
// notes what was not expected.
#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QWidget>

#include <vector>

namespace kvo::demo {

class Driver : public QObject {
    Q_OBJECT

public:
    // Ends the event loop by itself when `timeoutMs` are over.
    explicit Driver(int timeoutMs);

    // Opens the download by its menu command and goes through it; done() comes when the graph has
    // been painted or something failed.
    void start();

    // What went wrong; empty if nothing did.
    const QStringList& problems() const { return m_problems; }
    bool saidYesToView() const { return m_view; }
    // From the last press of a button before the logger's header to the question for the title.
    double transferSeconds() const { return m_transferSeconds; }
    double transferCpuSeconds() const { return m_transferCpuSeconds; }
    // Whether the wheel was asked for, which parts the greeting from the rest.
    bool wheelAsked() const { return m_wheelAsked; }

signals:
    void done();

private:
    void look();
    void serve(QWidget& modal);
    void press(QWidget& window, const QString& caption);
    void beginClock();
    void endClock();
    void problem(const QString& text);
    void cameBack();

    QTimer m_looking;
    QElapsedTimer m_clock;
    double m_cpuAtBegin = 0;
    double m_transferSeconds = 0;
    double m_transferCpuSeconds = 0;
    bool m_wheelAsked = false;
    bool m_view = false;
    std::vector<QPointer<QWidget>> m_served;
    QStringList m_problems;
};

} // namespace kvo::demo
