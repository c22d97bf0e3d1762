#include "vector_tools.h"

#include <array>
#include <bit>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace kvo::vectors {

std::string textOf(const Json& text) {
    const auto& utf8 = text.get_ref<const std::string&>();
    std::string bytes;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        if (lead < 0x80) {
            bytes += utf8[i];
        } else if ((lead == 0xC2 || lead == 0xC3) && i + 1 < utf8.size()) {
            const auto rest = static_cast<unsigned char>(utf8[++i]);
            bytes += static_cast<char>((lead & 3U) << 6U | (rest & 0x3FU));
        } else {
            throw std::runtime_error("text with a code point above 255");
        }
    }
    return bytes;
}

Json toJson(std::string_view text) {
    std::string utf8;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            utf8 += c;
        } else {
            utf8 += static_cast<char>(0xC0U | byte >> 6U);
            utf8 += static_cast<char>(0x80U | (byte & 0x3FU));
        }
    }
    return utf8;
}

static unsigned nibble(char digit) {
    if (digit >= '0' && digit <= '9') return static_cast<unsigned>(digit - '0');
    if (digit >= 'a' && digit <= 'f') return static_cast<unsigned>(digit - 'a' + 10);
    throw std::runtime_error("not a hex digit");
}

platform::Bytes bytesOfHex(const std::string& hex) {
    if (hex.size() % 2 != 0) throw std::runtime_error("odd number of hex digits");
    platform::Bytes bytes;
    for (std::size_t i = 0; i < hex.size(); i += 2) {
        bytes.push_back(static_cast<std::uint8_t>(nibble(hex[i]) << 4U | nibble(hex[i + 1])));
    }
    return bytes;
}

std::string hexOf(std::span<const std::uint8_t> bytes) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string hex;
    for (const std::uint8_t byte : bytes) {
        hex += digits[byte >> 4U];
        hex += digits[byte & 15U];
    }
    return hex;
}

std::string trimmed(std::string text) {
    text.erase(text.find_last_not_of(' ') + 1);
    text.erase(0, text.find_first_not_of(' '));
    return text;
}

void trimRight(Json& object, const std::string& key) {
    const auto found = object.find(key);
    if (found == object.end() || !found->is_string()) return;
    auto text = found->get<std::string>();
    text.erase(text.find_last_not_of(' ') + 1);
    *found = text;
}

std::uint32_t crc32(std::span<const std::uint8_t> bytes) {
    std::uint32_t sum = 0xFFFFFFFFU;
    for (const std::uint8_t byte : bytes) {
        sum ^= byte;
        for (int bit = 0; bit < 8; ++bit) sum = sum >> 1U ^ (0xEDB88320U & (0U - (sum & 1U)));
    }
    return ~sum;
}

namespace {

constexpr std::array<std::uint32_t, 64> roundConstants{0x428a2f98, 0x71374491, 0xb5c0fbcf,
    0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5, 0xd807aa98, 0x12835b01, 0x243185be,
    0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174, 0xe49b69c1, 0xefbe4786, 0x0fc19dc6,
    0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da, 0x983e5152, 0xa831c66d, 0xb00327c8,
    0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967, 0x27b70a85, 0x2e1b2138, 0x4d2c6dfc,
    0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85, 0xa2bfe8a1, 0xa81a664b, 0xc24b8b70,
    0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070, 0x19a4c116, 0x1e376c08, 0x2748774c,
    0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3, 0x748f82ee, 0x78a5636f, 0x84c87814,
    0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

using Words = std::array<std::uint32_t, 8>;

void addBlock(Words& sum, const std::uint8_t* block) {
    std::array<std::uint32_t, 64> w{};
    for (std::size_t i = 0; i < 16; ++i) {
        for (std::size_t k = 0; k < 4; ++k) w[i] = w[i] << 8U | block[4 * i + k];
    }
    for (std::size_t i = 16; i < 64; ++i) {
        const auto a = std::rotr(w[i - 15], 7) ^ std::rotr(w[i - 15], 18) ^ w[i - 15] >> 3U;
        const auto b = std::rotr(w[i - 2], 17) ^ std::rotr(w[i - 2], 19) ^ w[i - 2] >> 10U;
        w[i] = w[i - 16] + a + w[i - 7] + b;
    }
    Words v = sum;
    for (std::size_t i = 0; i < 64; ++i) {
        const auto s1 = std::rotr(v[4], 6) ^ std::rotr(v[4], 11) ^ std::rotr(v[4], 25);
        const auto choice = (v[4] & v[5]) ^ (~v[4] & v[6]);
        const auto t1 = v[7] + s1 + choice + roundConstants[i] + w[i];
        const auto s0 = std::rotr(v[0], 2) ^ std::rotr(v[0], 13) ^ std::rotr(v[0], 22);
        const auto t2 = s0 + ((v[0] & v[1]) ^ (v[0] & v[2]) ^ (v[1] & v[2]));
        v = {t1 + t2, v[0], v[1], v[2], v[3] + t1, v[4], v[5], v[6]};
    }
    for (std::size_t i = 0; i < 8; ++i) sum[i] += v[i];
}

} // namespace

std::string sha256(std::span<const std::uint8_t> bytes) {
    platform::Bytes message(bytes.begin(), bytes.end());
    message.push_back(0x80);
    while (message.size() % 64 != 56) message.push_back(0);
    const std::uint64_t bits = static_cast<std::uint64_t>(bytes.size()) * 8;
    for (unsigned shift = 64; shift > 0; shift -= 8) {
        message.push_back(static_cast<std::uint8_t>(bits >> (shift - 8)));
    }
    Words sum{0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a, 0x510e527f, 0x9b05688c, 0x1f83d9ab,
        0x5be0cd19};
    for (std::size_t i = 0; i < message.size(); i += 64) addBlock(sum, message.data() + i);
    platform::Bytes digest;
    for (const std::uint32_t word : sum) {
        for (unsigned shift = 32; shift > 0; shift -= 8) {
            digest.push_back(static_cast<std::uint8_t>(word >> (shift - 8)));
        }
    }
    return hexOf(digest);
}

platform::Bytes fileBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + path.string());
    return platform::Bytes(std::istreambuf_iterator<char>(file), {});
}

} // namespace kvo::vectors
