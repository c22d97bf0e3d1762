#pragma once
// A save that takes typed values into fields one after another and ends at the first that does not
// fit: what was taken before it stays taken, what comes behind it is left alone.
#include "core/basic/numbers.h"

#include <optional>
#include <string>
#include <string_view>

namespace kvo::setup {

class OrderedSave {
public:
    // Takes a converted value; one that is not there ends the save under the caption of its box,
    // which may be given with the name that its form has for it.
    template <typename Field, typename Value>
    void take(Field& field, const std::optional<Value>& value, std::string_view caption,
        std::string_view control = {}) {
        if (ended() || core::keepOnFailure(field, value)) return;
        m_failedBox = caption;
        m_failedControl = control;
    }
    // Takes what always fits.
    template <typename Field, typename Value> void take(Field& field, const Value& value) {
        if (!ended()) field = value;
    }
    // Takes the index of a list; without a selection (-1) the field stays as it is.
    template <typename Field> void takeIndex(Field& field, int index) {
        if (!ended() && index >= 0) field = static_cast<Field>(index);
    }

    bool ended() const { return !m_failedBox.empty(); }
    // Caption of the box that ended the save; empty if none did.
    const std::string& failedBox() const { return m_failedBox; }
    // Its name.
    const std::string& failedControl() const { return m_failedControl; }

private:
    std::string m_failedBox;
    std::string m_failedControl;
};

} // namespace kvo::setup
