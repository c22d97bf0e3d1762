#pragma once
// The far end of a serial line: something that gets bytes and has bytes to say.
#include <cstdint>
#include <optional>

namespace kvo::simulator {

// A byte on its way out. `asked` is false for what comes without a request, such as the frames of a
// live display; such bytes take their time on the line even where the line is otherwise unpaced.
struct OutgoingByte {
    std::uint8_t value = 0;
    bool asked = true;
};

class LineEnd {
public:
    virtual ~LineEnd() = default;
    // A byte has arrived here.
    virtual void receive(std::uint8_t byte) = 0;
    // Takes the next byte to send; nothing if there is nothing to say.
    virtual std::optional<OutgoingByte> next() = 0;
    // How much later than at once it looks at what arrives, milliseconds.
    virtual double lateMs() const { return 0; }
    // True once the cable has been pulled out.
    virtual bool hungUp() const { return false; }
};

} // namespace kvo::simulator
