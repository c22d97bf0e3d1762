#include "platform/os/comm_port.h"

#include "platform/port_words.h"

#include <algorithm>
#include <charconv>

namespace kvo::platform_os {
namespace {

using platform::PortError;

// The buffer that the link counts on. Past it bytes wait in the driver, so a flooding line cannot
// fill the memory.
constexpr std::size_t receiveBufferBytes = 1024;

// The system's numbers for why a port does not open. A port is opened for one program alone, which
// is what "access denied" means of it.
constexpr std::uint32_t fileNotFound = 2;
constexpr std::uint32_t pathNotFound = 3;
constexpr std::uint32_t accessDenied = 5;
constexpr std::uint32_t badUnit = 20;
constexpr std::uint32_t sharingViolation = 32;
constexpr std::uint32_t deviceDoesNotExist = 55;
constexpr std::uint32_t invalidName = 123;
constexpr std::uint32_t busyResource = 170;

PortError portErrorOf(std::uint32_t error) {
    switch (error) {
    case 0:
        return PortError::none;
    case fileNotFound:
    case pathNotFound:
    case badUnit:
    case deviceDoesNotExist:
    case invalidName:
        return PortError::missing;
    case accessDenied:
    case sharingViolation:
    case busyResource:
        return PortError::busy;
    default:
        return PortError::other;
    }
}

std::string nameOf(int number) {
    const bool isOne = number >= 1 && number <= platform::portNumbers;
    return isOne ? "COM" + std::to_string(number) : std::string();
}

int numberIn(std::string_view text, int otherwise) {
    int number = otherwise;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

} // namespace

std::string CommPort::deviceOf(int number) const {
    return nameOf(number);
}

// Each port is opened for a moment, which is the one way to learn whether that goes.
std::vector<platform::PortState> CommPort::portStates() const {
    std::vector<platform::PortState> states;
    const auto trial = m_line->another();
    for (int number = 1; number <= platform::portNumbers; ++number) {
        const std::string name = nameOf(number);
        const bool own = m_open && number == m_number;
        const PortError error =
            own ? PortError::busy : portErrorOf(trial->open(name, CommSettings()));
        trial->close();
        const std::string target = m_line->target(name);
        const bool none = error == PortError::missing && target.empty();
        states.push_back({none ? std::string() : target.empty() ? name : target, error});
    }
    return states;
}

void CommPort::setCommPort(int number) {
    if (!m_open) m_number = number;
}

void CommPort::setSettings(std::string_view settings) {
    std::vector<std::string_view> parts;
    for (std::size_t from = 0; from <= settings.size();) {
        const std::size_t end = std::min(settings.find(',', from), settings.size());
        parts.push_back(settings.substr(from, end - from));
        from = end + 1;
    }
    if (parts.size() != 4 || parts[1].empty()) return;
    m_settings = {numberIn(parts[0], m_settings.baud), parts[1].front(),
        numberIn(parts[2], m_settings.dataBits), numberIn(parts[3], m_settings.stopBits)};
}

void CommPort::setPortOpen(bool open) {
    if (open == m_open) return;
    if (open)
        openPort();
    else
        closePort();
}

void CommPort::openPort() {
    m_openError = PortError::none;
    m_openErrorText.clear();
    const std::string name = nameOf(m_number);
    const std::uint32_t error = name.empty() ? fileNotFound : m_line->open(name, m_settings);
    if (error == 0) {
        m_open = true;
        if (whenOpened) whenOpened(true);
        receive(); // and be told of more
        return;
    }
    m_openError = portErrorOf(error);
    if (m_openError == PortError::missing)
        m_openErrorText = platform::missingPortText(m_number, {});
    else if (m_openError == PortError::busy)
        m_openErrorText = platform::busyPortText(m_number, name);
    else
        m_openErrorText = platform::failedPortText(
            m_number, name, m_line->words(error) + " (" + std::to_string(error) + ")");
}

void CommPort::closePort() {
    if (!m_open) return;
    m_open = false;
    m_line->close();
    m_received.clear();
    m_unsent.clear();
    m_going = 0;
    if (whenOpened) whenOpened(false);
}

void CommPort::receive() {
    if (m_open && !m_line->receive(m_received, receiveBufferBytes)) closePort();
}

// Gives the line what waits, once what it had is gone. False: the line is lost.
bool CommPort::sendMore() {
    if (m_going > 0) {
        const auto sent = m_line->sent();
        if (!sent) return false;
        if (!*sent) return true;
        m_going = 0;
    }
    if (m_unsent.empty()) return true;
    if (!m_line->send(m_unsent)) return false;
    m_going = m_unsent.size();
    m_unsent.clear();
    return true;
}

int CommPort::inBufferCount() {
    receive();
    return static_cast<int>(m_received.size());
}

int CommPort::outBufferCount() {
    if (m_open && !sendMore()) closePort();
    return static_cast<int>(m_going + m_unsent.size());
}

void CommPort::output(std::string_view bytes) {
    if (!m_open) return;
    m_unsent += bytes;
    if (!sendMore()) closePort();
}

std::string CommPort::input() {
    const std::size_t wanted =
        m_inputLen > 0 ? static_cast<std::size_t>(m_inputLen) : m_received.size();
    std::string taken = m_received.substr(0, wanted);
    m_received.erase(0, taken.size());
    receive(); // a full buffer had no room for what waits in the driver
    return taken;
}

// Who waits for a batch is not woken for each byte of it.
bool CommPort::takeEvents() {
    if (!m_open) return false;
    const std::size_t before = m_received.size();
    const bool wasSending = m_going > 0;
    receive();
    if (m_open && (!sendMore() || !m_line->isThere())) closePort();
    if (!m_open) return true;
    const bool grew = m_received.size() > before;
    return (wasSending && m_going == 0) ||
           (grew && m_received.size() >= static_cast<std::size_t>(std::max(m_inputLen, 1)));
}

} // namespace kvo::platform_os
