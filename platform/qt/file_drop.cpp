#include "platform/qt/file_drop.h"

#include "platform/qt/text.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <QWidget>

namespace kvo::platform_qt {
namespace {

// Empty where nothing of it is a file of this machine.
QString firstFile(const QMimeData& data) {
    const auto urls = data.urls();
    for (const QUrl& url : urls)
        if (url.isLocalFile()) return url.toLocalFile();
    return {};
}

class FileDrop : public QObject {
public:
    FileDrop(QWidget& window, std::function<void(const std::string&)> take)
        : QObject(&window), m_take(std::move(take)) {
        window.setAcceptDrops(true);
        window.installEventFilter(this);
    }

    bool eventFilter(QObject* object, QEvent* event) override {
        const bool enters = event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove;
        if (!enters && event->type() != QEvent::Drop) return QObject::eventFilter(object, event);
        auto* drop = static_cast<QDropEvent*>(event);
        const QString path = firstFile(*drop->mimeData());
        const bool takes = !path.isEmpty() && QApplication::activeModalWidget() == nullptr;
        drop->setAccepted(takes);
        if (!takes) return true;
        drop->setDropAction(Qt::CopyAction); // what is dropped stays where it was
        // Behind the drop, since the program that it came from waits for its end.
        if (!enters) QTimer::singleShot(0, this, [this, path] { m_take(typedPath(path)); });
        return true;
    }

private:
    std::function<void(const std::string&)> m_take;
};

} // namespace

void takeFileDrops(QWidget& window, std::function<void(const std::string& path)> take) {
    new FileDrop(window, std::move(take)); // goes with the window
}

} // namespace kvo::platform_qt
