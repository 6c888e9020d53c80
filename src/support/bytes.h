// Wire and file records, written and read field by field, little-endian.
#pragma once

#include "qm_sdk_dual.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <stdexcept>
#include <utility>
#include <vector>

namespace qm {

using Bytes = std::span<const Ouint8>;
using ByteBuffer = std::vector<Ouint8>;

// A flag of a caller's record, whatever byte the caller put there.
[[nodiscard]] inline bool flag(const bool& field) {
    Ouint8 byte;
    std::memcpy(&byte, &field, sizeof byte);
    return byte != 0;
}

// An owned byte buffer of a fixed length.
class CData {
  public:
    CData() = default;
    explicit CData(Ouint32 length) : m_pData(length), m_nDataLen(length) {}
    explicit CData(ByteBuffer bytes) : m_pData(std::move(bytes)), m_nDataLen(length_of(m_pData)) {}

    // A buffer that holds nothing but the mark that it could not be built.
    static CData error() {
        CData mark;
        mark.m_nDataLen = 0xFFFFFFFFU;
        return mark;
    }
    [[nodiscard]] bool is_error() const { return m_pData.empty() && m_nDataLen == 0xFFFFFFFFU; }

    [[nodiscard]] Bytes bytes() const { return m_pData; }

    // A length as the records state it; throws for more than 32 bits can say.
    static Ouint32 length_of(Bytes bytes) {
        if (bytes.size() > 0xFFFFFFFFU) throw std::length_error("more than 4 GiB");
        return static_cast<Ouint32>(bytes.size());
    }

    ByteBuffer m_pData;
    Ouint32 m_nDataLen = 0;
};

// Appends fields to a byte vector.
class ByteWriter {
  public:
    explicit ByteWriter(ByteBuffer& out) : m_out(out) {}

    ByteWriter& u8(unsigned value) { return append(value, 1); }
    ByteWriter& u16(unsigned value) { return append(value, 2); }
    ByteWriter& u32(Ouint32 value) { return append(value, 4); }
    ByteWriter& bytes(Bytes data) {
        const std::size_t at = m_out.size();
        m_out.resize(at + data.size());
        std::copy(data.begin(), data.end(), m_out.begin() + static_cast<std::ptrdiff_t>(at));
        return *this;
    }
    ByteWriter& text(const char* characters, std::size_t count) {
        return bytes({reinterpret_cast<const Ouint8*>(characters), count});
    }
    ByteWriter& zeros(std::size_t count) {
        m_out.insert(m_out.end(), count, 0);
        return *this;
    }

    // Overwrites a field that is known only once what follows it has been written.
    void set_u32(std::size_t offset, Ouint32 value) {
        for (std::size_t i = 0; i < 4; ++i) m_out[offset + i] = static_cast<Ouint8>(value >> (8 * i));
    }

  private:
    ByteWriter& append(Ouint32 value, int width) {
        for (int i = 0; i < width; ++i) m_out.push_back(static_cast<Ouint8>(value >> (8 * i)));
        return *this;
    }

    ByteBuffer& m_out;
};

// Takes fields off a byte sequence. A read past the end gives zeros and marks the reader as failed for good.
class ByteReader {
  public:
    explicit ByteReader(Bytes data) : m_left(data) {}

    Ouint8 u8() { return static_cast<Ouint8>(number(1)); }
    Ouint16 u16() { return static_cast<Ouint16>(number(2)); }
    Ouint32 u32() { return number(4); }
    Bytes bytes(std::size_t count) {
        if (!has(count)) return {};
        const Bytes head = m_left.first(count);
        m_left = m_left.subspan(count);
        return head;
    }

    // Takes a field into a variable; one that is not there whole leaves it as it is.
    void update(Ouint8& value) { update_with(value, 1); }
    void update(Ouint32& value) { update_with(value, 4); }
    void update(char* characters, std::size_t count) {
        const Bytes field = bytes(count);
        std::copy(field.begin(), field.end(), characters);
    }

    void skip(std::size_t count) { (void)bytes(count); }

    [[nodiscard]] std::size_t left() const { return m_left.size(); }
    [[nodiscard]] Bytes rest() const { return m_left; }
    [[nodiscard]] bool ok() const { return m_ok; }

  private:
    bool has(std::size_t count) {
        if (count > m_left.size()) {
            m_ok = false;
            m_left = {};
        }
        return m_ok;
    }
    template <class T> void update_with(T& value, std::size_t width) {
        const Ouint32 field = number(width);
        if (m_ok) value = static_cast<T>(field);
    }
    Ouint32 number(std::size_t width) {
        Ouint32 value = 0;
        const Bytes field = bytes(width);
        for (std::size_t i = 0; i < field.size(); ++i) value |= static_cast<Ouint32>(field[i]) << (8 * i);
        return value;
    }

    Bytes m_left;
    bool m_ok = true;
};

} // namespace qm
