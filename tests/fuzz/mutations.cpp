#include "mutations.h"

#include <algorithm>
#include <array>
#include <random>

namespace kvo::fuzz {

using platform::Bytes;

namespace {

class Damage {
public:
    Damage(Bytes file, unsigned number) : m_file(std::move(file)), m_random(number) {}

    Bytes result() {
        for (std::size_t turns = 1 + pick(4); turns > 0; --turns) once();
        return std::move(m_file);
    }

private:
    std::size_t pick(std::size_t below) { return below == 0 ? 0 : m_random() % below; }
    std::ptrdiff_t place() { return static_cast<std::ptrdiff_t>(pick(m_file.size() + 1)); }
    // Mostly in front, where lengths and types stand.
    std::size_t byte() {
        return pick(pick(2) == 0 ? std::min<std::size_t>(m_file.size(), 90) : m_file.size());
    }

    void once() {
        constexpr std::array<std::uint8_t, 8> odd{0, 1, 0x7F, 0x80, 0xFF, ' ', '#', '9'};
        switch (pick(6)) {
        case 0:
            m_file.resize(pick(m_file.size() + 1));
            break;
        case 1:
            m_file.insert(m_file.begin() + place(), pick(200), odd[pick(odd.size())]);
            break;
        case 2: {
            const auto from = place();
            m_file.erase(m_file.begin() + from,
                m_file.begin() + std::min(from + static_cast<std::ptrdiff_t>(pick(200)),
                                     static_cast<std::ptrdiff_t>(m_file.size())));
            break;
        }
        default:
            if (m_file.empty()) return;
            for (std::size_t n = 1 + pick(20); n > 0; --n) {
                m_file[byte()] =
                    pick(2) == 0 ? odd[pick(odd.size())] : static_cast<std::uint8_t>(m_random());
            }
        }
    }

    Bytes m_file;
    std::mt19937 m_random;
};

} // namespace

Bytes damaged(const Bytes& file, unsigned number) {
    return Damage(file, number).result();
}

} // namespace kvo::fuzz
