// SPDX-License-Identifier: Apache-2.0
#include "host/protocol/packet.h"

#include "base/text.h"

namespace protocol {
namespace {

constexpr std::size_t kHeader = 2; // the version and the kind
constexpr int kLengthBytes = 2;

bool IsText(std::string_view bytes)
{
    return base::Utf16Length(bytes).has_value();
}

bool IsName(std::string_view bytes)
{
    return bytes.find('\0') == bytes.npos && IsText(bytes);
}

} // namespace

bool IsOfThisVersion(std::string_view packet)
{
    return !packet.empty() && static_cast<std::uint8_t>(packet[0]) == kVersion;
}

std::optional<Kind> KindOf(std::string_view packet)
{
    if (packet.size() < kHeader || packet.size() > kMaxPacket || !IsOfThisVersion(packet))
        return std::nullopt;
    return static_cast<Kind>(packet[1]);
}

PacketWriter::PacketWriter(Kind kind)
    : m_bytes(kMaxPacket)
{
    Put(kVersion, 1);
    Put(static_cast<std::uint8_t>(kind), 1);
}

void PacketWriter::Put(std::uint32_t value, int bytes)
{
    for (int i = 0; i < bytes; ++i, value >>= 8)
        m_good &= m_bytes.Append(static_cast<char>(value & 0xFF));
}

void PacketWriter::PutBytes(std::string_view bytes, std::size_t maxBytes)
{
    m_good &= bytes.size() <= maxBytes;
    Put(static_cast<std::uint32_t>(bytes.size()), kLengthBytes);
    for (std::size_t i = 0; i < bytes.size() && m_good; ++i)
        m_good &= m_bytes.Append(bytes[i]);
}

void PacketWriter::Name(const std::string &text, std::size_t maxBytes)
{
    m_good &= IsName(text);
    PutBytes(text, maxBytes);
}

void PacketWriter::Typed(const Secret &text, std::size_t maxBytes)
{
    m_good &= IsText(text.View());
    PutBytes(text.View(), maxBytes);
}

void PacketWriter::Bytes(const Secret &bytes, std::size_t maxBytes)
{
    PutBytes(bytes.View(), maxBytes);
}

void PacketWriter::PutField(const unsigned char *field, std::size_t size)
{
    for (std::size_t i = 0; i < size; ++i)
        Put(field[i], 1);
}

std::optional<Secret> PacketWriter::Finish()
{
    return m_good ? std::optional(std::move(m_bytes)) : std::nullopt;
}

PacketReader::PacketReader(std::string_view packet, Kind kind)
    : m_rest(packet)
    , m_good(KindOf(packet) == kind)
{
    if (m_good)
        m_rest.remove_prefix(kHeader);
}

std::uint32_t PacketReader::Take(std::size_t bytes)
{
    m_good &= m_rest.size() >= bytes;
    if (!m_good)
        return 0;
    std::uint32_t value = 0;
    for (std::size_t i = bytes; i > 0; --i)
        value = value << 8 | static_cast<std::uint8_t>(m_rest[i - 1]);
    m_rest.remove_prefix(bytes);
    return value;
}

std::string_view PacketReader::TakeBytes(std::size_t maxBytes)
{
    const std::size_t size = Take(kLengthBytes);
    m_good &= size <= maxBytes && size <= m_rest.size();
    if (!m_good)
        return {};
    const std::string_view bytes = m_rest.substr(0, size);
    m_rest.remove_prefix(size);
    return bytes;
}

void PacketReader::TakeField(unsigned char *field, std::size_t size)
{
    m_good &= m_rest.size() >= size;
    if (!m_good)
        return;
    m_rest.copy(reinterpret_cast<char *>(field), size);
    m_rest.remove_prefix(size);
}

void PacketReader::Flag(bool &value)
{
    const std::uint32_t number = Take(1);
    m_good &= number <= 1;
    value = number == 1;
}

void PacketReader::Name(std::string &text, std::size_t maxBytes)
{
    text = TakeBytes(maxBytes);
    m_good &= IsName(text);
}

void PacketReader::Typed(Secret &text, std::size_t maxBytes)
{
    text = base::CopyOf(TakeBytes(maxBytes));
    m_good &= IsText(text.View());
}

void PacketReader::Bytes(Secret &bytes, std::size_t maxBytes)
{
    bytes = base::CopyOf(TakeBytes(maxBytes));
}

} // namespace protocol
