#pragma once
// A record of a file against the table of its fields: each field alone, with bytes that nothing
// else has, at its own offset, written and read. Two fields that change places are found even where
// a record that goes there and back looks the same.
#include "platform/bytes.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <type_traits>
#include <vector>

namespace kvo::testing {

// Bytes of `width` that tell their offset, none of them 0.
inline platform::Bytes bytesAt(std::size_t offset, std::size_t width) {
    platform::Bytes bytes;
    for (std::size_t i = 0; i < width; ++i)
        bytes.push_back(static_cast<std::uint8_t>(1 + (offset * 7 + i * 3) % 250));
    return bytes;
}

template <class Record> class RecordFields {
public:
    // A number, low byte first.
    template <class Value>
    void field(const std::string& name, std::size_t offset, Value Record::*member) {
        const platform::Bytes bytes = bytesOf<Value>(offset);
        m_fields.push_back({name, offset, bytes,
            [member, bytes](Record& record) { record.*member = numberOf<Value>(bytes); }});
    }
    // Numbers, each `stride` bytes behind the one before; 0: one directly behind the other.
    template <class Array>
    void array(const std::string& name, std::size_t offset, Array Record::*member,
        std::size_t stride = 0) {
        using Value = std::remove_cvref_t<decltype(*(Record{}.*member).begin())>;
        const auto count =
            static_cast<std::size_t>((Record{}.*member).end() - (Record{}.*member).begin());
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t at = offset + i * (stride == 0 ? sizeof(Value) : stride);
            const platform::Bytes bytes = bytesOf<Value>(at);
            m_fields.push_back({name + "[" + std::to_string(i) + "]", at, bytes,
                [member, bytes, i](
                    Record& record) { (record.*member).begin()[i] = numberOf<Value>(bytes); }});
        }
    }
    // A text that fills its width.
    void text(const std::string& name, std::size_t offset, std::size_t width,
        std::string Record::*member) {
        const platform::Bytes bytes = bytesAt(offset, width);
        m_fields.push_back({name, offset, bytes, [member, bytes](Record& record) {
                                record.*member = std::string(bytes.begin(), bytes.end());
                            }});
    }
    template <class Array>
    void texts(
        const std::string& name, std::size_t offset, std::size_t width, Array Record::*member) {
        const auto count =
            static_cast<std::size_t>((Record{}.*member).end() - (Record{}.*member).begin());
        for (std::size_t i = 0; i < count; ++i) {
            const platform::Bytes bytes = bytesAt(offset + i * width, width);
            m_fields.push_back({name + "[" + std::to_string(i) + "]", offset + i * width, bytes,
                [member, bytes, i](Record& record) {
                    (record.*member).begin()[i] = std::string(bytes.begin(), bytes.end());
                }});
        }
    }
    // Bytes that belong to no field of this table.
    void leaveOut(std::size_t offset, std::size_t width) { m_leftOut.push_back({offset, width}); }

    // `base` is a record that comes back as it is. The fields have all bytes of what it encodes to.
    void check(const Record& base, const std::function<platform::Bytes(const Record&)>& encode,
        const std::function<bool(const platform::Bytes&, Record&)>& decode) const {
        const platform::Bytes plain = encode(base);
        std::vector<int> owners(plain.size(), 0);
        for (const auto& [offset, width] : m_leftOut)
            for (std::size_t i = 0; i < width; ++i) ++owners.at(offset + i);
        for (const Field& field : m_fields) {
            Record record = base;
            field.set(record);
            platform::Bytes expected = plain;
            for (std::size_t i = 0; i < field.bytes.size(); ++i) {
                expected.at(field.offset + i) = field.bytes[i];
                ++owners[field.offset + i];
            }
            EXPECT_EQ(encode(record), expected) << field.name << " is not written at its offset";
            Record back = base;
            EXPECT_TRUE(decode(expected, back)) << field.name;
            EXPECT_TRUE(back == record) << field.name << " is not read from its offset";
        }
        for (std::size_t i = 0; i < owners.size(); ++i)
            EXPECT_EQ(owners[i], 1) << "fields that have byte " << i;
    }

private:
    struct Field {
        std::string name;
        std::size_t offset;
        platform::Bytes bytes;
        std::function<void(Record&)> set;
    };
    struct Gap {
        std::size_t offset;
        std::size_t width;
    };

    // The bytes of a number that tells its offset. A floating number is a small whole one and a
    // half, so that it equals itself.
    template <class Value> static platform::Bytes bytesOf(std::size_t offset) {
        if constexpr (std::is_floating_point_v<Value>) {
            const Value value = static_cast<Value>(offset) + static_cast<Value>(1.5);
            platform::Bytes bytes(sizeof value);
            std::memcpy(bytes.data(), &value, sizeof value);
            return bytes;
        } else {
            return bytesAt(offset, sizeof(Value));
        }
    }
    template <class Value> static Value numberOf(const platform::Bytes& bytes) {
        Value value{};
        std::memcpy(&value, bytes.data(), sizeof value);
        return value;
    }

    std::vector<Field> m_fields;
    std::vector<Gap> m_leftOut;
};

} // namespace kvo::testing
