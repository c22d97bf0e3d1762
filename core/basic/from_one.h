#pragma once
// An array whose indexes count from 1, as channels, gears and samples do.
#include <array>
#include <cassert>
#include <cstddef>

namespace kvo::core {

template <typename T, int N> class FromOne {
public:
    static constexpr int size = N;

    // i from 1 to N.
    T& operator[](int i) {
        assert(i >= 1 && i <= N);
        return m_items[static_cast<std::size_t>(i - 1)];
    }
    const T& operator[](int i) const {
        assert(i >= 1 && i <= N);
        return m_items[static_cast<std::size_t>(i - 1)];
    }
    auto begin() { return m_items.begin(); }
    auto end() { return m_items.end(); }
    auto begin() const { return m_items.begin(); }
    auto end() const { return m_items.end(); }
    void fill(const T& value) { m_items.fill(value); }
    friend bool operator==(const FromOne&, const FromOne&) = default;

private:
    std::array<T, static_cast<std::size_t>(N)> m_items{};
};

} // namespace kvo::core
