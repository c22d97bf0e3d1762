#pragma once
// Files that are dragged onto a window.
#include <functional>
#include <string>

class QWidget;

namespace kvo::platform_qt {

// From now on the window takes a file or folder that is dropped on it, and hands on its path: the
// first one where there are several. What is no file of this machine is not taken, and nothing is
// while a modal dialog stands over the window.
void takeFileDrops(QWidget& window, std::function<void(const std::string& path)> take);

} // namespace kvo::platform_qt
