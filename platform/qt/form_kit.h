#pragma once
// How forms are made, found and put away. A form is a class derived from QWidget, QDialog or
// QMainWindow with a constructor without arguments; there is one of each, made on first use, and
// other forms reach it through form<F>(). Controls carry the rules' names as object names; arrays
// of controls are reached by index.
#include "platform/dialogs.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <array>
#include <cassert>
#include <functional>
#include <initializer_list>
#include <type_traits>
#include <utility>

class QDialog;
class QLabel;
class QTabBar;

namespace kvo::platform_qt {

// A pixel is 15 twips, the unit in which the rules measure windows.
inline constexpr int twipsPerPixel = 15;
constexpr int toTwips(int pixels) {
    return pixels * twipsPerPixel;
}
constexpr int toPixels(int twips) {
    return twips / twipsPerPixel;
}

namespace detail {
using Slot = QPointer<QWidget>;
// Remembers a slot so that unloadAllForms() finds it.
void rememberSlot(Slot& slot);
void putAway(Slot& slot);
template <class F> Slot& slotOf() {
    static Slot slot;
    static const bool remembered = (rememberSlot(slot), true);
    (void)remembered;
    return slot;
}
} // namespace detail

// Whether the form is loaded, without loading it.
template <class F> bool isLoaded() {
    return !detail::slotOf<F>().isNull();
}

// The one form of its class, made (loaded) on first use.
template <class F> F& form() {
    detail::Slot& slot = detail::slotOf<F>();
    if (slot.isNull()) {
        auto* made = new F;
        // A form whose load already put another in its place does not exist: a load never loads
        // itself again.
        assert(slot.isNull());
        slot = made;
    }
    return static_cast<F&>(*slot);
}

// Hides the form and takes it away; the next form<F>() makes a fresh one. Safe from the form's own
// event handlers: the object lives until the handler is through, but is no longer reachable. A
// modal loop over the form ends.
template <class F> void unload() {
    detail::putAway(detail::slotOf<F>());
}

// Marks a wait that lets events run without an event loop of its own: no form is taken away in it.
class Waiting {
public:
    Waiting() { ++depth; }
    ~Waiting() { --depth; }
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;
    static inline int depth = 0;
};

// All forms at once, at the end of the program.
void unloadAllForms();

// What of a form outlives its unload: declare `struct Kept` in the form, reach it with kept<F>().
template <class F> typename F::Kept& kept() {
    static typename F::Kept all;
    return all;
}

// Shows a dialog modally and returns when it is hidden or unloaded. The dialog may be gone then.
void showModal(QDialog& dialog);

// Names a control as the rules do, in one line with its making.
template <class W> W* named(W* widget, const char* name) {
    widget->setObjectName(QLatin1String(name));
    return widget;
}

// The control of that name below a form, whose class must be W.
template <class W> W& control(const QObject& parent, const char* name) {
    W* found = parent.findChild<W*>(QLatin1String(name));
    assert(found != nullptr);
    return *found;
}

// Controls that share a name and are told apart by an index from First to Last. Each one's object
// name is "Name(i)".
template <class W, int First, int Last> class ControlArray {
public:
    static constexpr int first = First;
    static constexpr int last = Last;

    // make(i) gives a new control for each index in turn.
    template <class Make> void make(const char* name, Make&& makeOne) {
        for (int i = First; i <= Last; ++i) set(name, i, makeOne(i));
    }
    W* set(const char* name, int i, W* widget) {
        widget->setObjectName(QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(i));
        return m_items[place(i)] = widget;
    }
    W& operator[](int i) const {
        assert(i >= First && i <= Last && m_items[place(i)] != nullptr);
        return *m_items[place(i)];
    }
    // For indexes that may legally be out of range: nothing then.
    W* find(int i) const { return i >= First && i <= Last ? m_items[place(i)] : nullptr; }
    auto begin() const { return m_items.begin(); }
    auto end() const { return m_items.end(); }

private:
    static constexpr std::size_t place(int i) { return static_cast<std::size_t>(i - First); }
    std::array<W*, static_cast<std::size_t>(Last - First + 1)> m_items{};
};

// One thing of a row or column: a control, another layout, or room (stretch).
class LayoutPart {
public:
    LayoutPart(QWidget* widget, int stretch = 0) : m_widget(widget), m_stretch(stretch) {}
    LayoutPart(QLayout* layout, int stretch = 0) : m_layout(layout), m_stretch(stretch) {}
    static LayoutPart room(int stretch = 1) { return LayoutPart(stretch); }
    void addTo(QBoxLayout& box) const;

private:
    explicit LayoutPart(int stretch) : m_stretch(stretch) {}
    QWidget* m_widget = nullptr;
    QLayout* m_layout = nullptr;
    int m_stretch = 0;
};

QHBoxLayout* row(std::initializer_list<LayoutPart> parts);
QVBoxLayout* column(std::initializer_list<LayoutPart> parts);

// A label that names a box: its & letter moves the focus there, and assistive tools speak it.
QLabel* buddyLabel(const QString& caption, QWidget* box);
// A label whose text is shown as it is, whatever it holds; and one above a group of others.
QLabel* plainLabel(const QString& text);
// A text as a tool tip shows it as it is, where one with < and > in it would be a page with markup.
QString plainTip(const QString& text);
QLabel* headingLabel(const QString& text);
// A label for a value that changes in place: digits of one width, and room for `widest` so that
// nothing beside it moves.
QLabel* valueLabel(const QString& widest);

// Runs `handler` when the user leaves a box, not when another window or a menu takes the focus for
// a while.
void onLeave(QWidget* box, std::function<void()> handler);

// Runs `handler` on a click of the tab that is in view already, of which a strip of tabs tells no
// change.
void onClickOfTheTabInView(QTabBar* tabs, std::function<void(int tab)> handler);

// The hourglass for as long as the object lives.
class Hourglass {
public:
    explicit Hourglass(platform::Dialogs& dialogs) : m_dialogs(dialogs) {
        m_dialogs.setHourglass(true);
    }
    ~Hourglass() { m_dialogs.setHourglass(false); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;

private:
    platform::Dialogs& m_dialogs;
};

// Saves what a window shows as a picture file; false when it cannot be written.
[[nodiscard]] bool saveScreenshot(QWidget& window, const QString& path);

} // namespace kvo::platform_qt
