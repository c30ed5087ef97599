// SPDX-License-Identifier: Apache-2.0
// The bytes between the service and its screens, and the processes of PKCS#11 modules. A packet is the
// protocol's version, the kind of its message and the fields one after the other: numbers with the least byte
// first, texts and lists behind their length. There is one way to write a message and no room for more: what
// is short, long or anything else than a writer of the same version makes is refused as a whole. Packets
// carry passwords, so they live in locked memory.
//
// Writer and reader have the same members, so that one list of a message's fields serves both; neither throws
// on bad input, each remembers that there was some.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/secret.h"

namespace protocol {

using base::Secret;

inline constexpr std::uint8_t kVersion = 1;
inline constexpr std::size_t kMaxPacket = 4096;

// Numbers say what goes over the wire: never give one away a second time.
enum class Kind : std::uint8_t {
    Hello = 1,
    TryPassword,
    TryToken,
    CheckReplaceable,
    ReplacePassword,
    RecoveryBegin,
    RecoveryEntropy,
    RecoveryFinish,
    Forget,
    Start,
    // Of the service to the process of a PKCS#11 module.
    ListTokens = 0x20,
    LogIn,
    Unwrap,
    UnwrapByNextKey,
    LogOut,
    // Events, which nobody has asked for.
    Tokens = 0x40,
    Stop,
};

constexpr Kind ReplyTo(Kind request)
{
    return static_cast<Kind>(static_cast<std::uint8_t>(request) | 0x80);
}
constexpr bool IsEvent(Kind kind)
{
    return kind >= Kind::Tokens && kind <= Kind::Stop;
}

// Of any bytes; the kind may be none of the above.
bool IsOfThisVersion(std::string_view packet);
std::optional<Kind> KindOf(std::string_view packet);

class PacketWriter
{
public:
    explicit PacketWriter(Kind kind);

    void Flag(bool value) { Put(value, 1); }
    void Number(std::uint8_t value) { Put(value, 1); }
    void Number(std::uint16_t value) { Put(value, 2); }
    void Number(std::uint32_t value) { Put(value, 4); }
    void Number(std::uint64_t value)
    {
        Put(static_cast<std::uint32_t>(value), 4);
        Put(static_cast<std::uint32_t>(value >> 32), 4);
    }
    // Of any bytes, always of this length.
    template <std::size_t Size>
    void Field(const unsigned char (&field)[Size])
    {
        PutField(field, Size);
    }
    // An enumeration of bytes that counts from 0 and says how far by an enumerator Last.
    template <typename Enum>
    void Choice(Enum value)
    {
        Put(static_cast<std::uint8_t>(value), 1);
    }
    // Valid UTF-8 without a zero byte.
    void Name(const std::string &text, std::size_t maxBytes);
    // Valid UTF-8, as a person has typed it.
    void Typed(const Secret &text, std::size_t maxBytes);
    void Bytes(const Secret &bytes, std::size_t maxBytes);
    template <typename Element>
    void List(const std::vector<Element> &elements, std::size_t maxElements)
    {
        m_good &= elements.size() <= maxElements;
        Put(static_cast<std::uint32_t>(elements.size()), 1);
        for (const Element &element : elements)
            Element::Visit(element, *this);
    }

    // Nothing when a field was too long or not what it should be.
    std::optional<Secret> Finish();

private:
    void Put(std::uint32_t value, int bytes);
    void PutBytes(std::string_view bytes, std::size_t maxBytes);
    void PutField(const unsigned char *field, std::size_t size);

    Secret m_bytes;
    bool m_good = true;
};

class PacketReader
{
public:
    // `packet` must outlive this object.
    PacketReader(std::string_view packet, Kind kind);

    void Flag(bool &value);
    void Number(std::uint8_t &value) { value = static_cast<std::uint8_t>(Take(1)); }
    void Number(std::uint16_t &value) { value = static_cast<std::uint16_t>(Take(2)); }
    void Number(std::uint32_t &value) { value = Take(4); }
    void Number(std::uint64_t &value)
    {
        value = Take(4);
        value |= std::uint64_t{Take(4)} << 32;
    }
    template <std::size_t Size>
    void Field(unsigned char (&field)[Size])
    {
        TakeField(field, Size);
    }
    template <typename Enum>
    void Choice(Enum &value)
    {
        const std::uint32_t number = Take(1);
        m_good &= number <= static_cast<std::uint8_t>(Enum::Last);
        value = m_good ? static_cast<Enum>(number) : Enum{};
    }
    void Name(std::string &text, std::size_t maxBytes);
    void Typed(Secret &text, std::size_t maxBytes);
    void Bytes(Secret &bytes, std::size_t maxBytes);
    template <typename Element>
    void List(std::vector<Element> &elements, std::size_t maxElements)
    {
        const std::uint32_t count = Take(1);
        m_good &= count <= maxElements;
        for (std::uint32_t i = 0; i < count && m_good; ++i)
            Element::Visit(elements.emplace_back(), *this);
    }

    // Whether all was good, and nothing is left over.
    bool IsComplete() const { return m_good && m_rest.empty(); }

private:
    std::uint32_t Take(std::size_t bytes);
    std::string_view TakeBytes(std::size_t maxBytes);
    void TakeField(unsigned char *field, std::size_t size);

    std::string_view m_rest;
    bool m_good;
};

template <typename Message>
std::optional<Secret> Encode(const Message &message)
{
    PacketWriter writer(Message::kKind);
    Message::Visit(message, writer);
    return writer.Finish();
}

template <typename Message>
std::optional<Message> Decode(std::string_view packet)
{
    std::optional<Message> message(std::in_place);
    PacketReader reader(packet, Message::kKind);
    Message::Visit(*message, reader);
    if (!reader.IsComplete())
        message.reset();
    return message;
}

} // namespace protocol
