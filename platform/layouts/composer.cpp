// SPDX-License-Identifier: Apache-2.0
#include "platform/layouts/composer.h"

#include <utility>

#include <xkbcommon/xkbcommon-keysyms.h>

#include "platform/layouts/keymap.h"

namespace layouts {

namespace {

// Its table has the accents of all languages.
constexpr const char *kTableLocale = "en_US.UTF-8";
// No sequence of dead keys has more.
constexpr std::size_t kLongestSequence = 4;
constexpr std::size_t kTextSize = 64;
// United States-International, where the acute and c make what the table makes of the cedilla and c.
constexpr std::uint32_t kInternational = 0x00020409;

XkbComposeState MakeState()
{
    static const XkbComposeTable s_table(
        SharedContext()
            ? xkb_compose_table_new_from_locale(SharedContext(), kTableLocale, XKB_COMPOSE_COMPILE_NO_FLAGS)
            : nullptr);
    return XkbComposeState(s_table ? xkb_compose_state_new(s_table.get(), XKB_COMPOSE_STATE_NO_FLAGS)
                                   : nullptr);
}

std::u16string TextOf(xkb_compose_state *state)
{
    char text[kTextSize];
    xkb_compose_state_get_utf8(state, text, sizeof text);
    return ToUtf16(text);
}

} // namespace

Composer::Composer()
    : m_state(MakeState())
    , m_scratch(MakeState())
{
}

void Composer::SetLayout(const Layout &layout)
{
    m_acuteMakesCedilla = layout.id == kInternational;
}

Composer::Result Composer::Feed(xkb_keysym_t symbol)
{
    if (!HasTable() || symbol == XKB_KEY_NoSymbol ||
        xkb_compose_state_feed(m_state.get(), symbol) == XKB_COMPOSE_FEED_IGNORED)
        return {};
    switch (xkb_compose_state_get_status(m_state.get())) {
    case XKB_COMPOSE_COMPOSING:
        m_waiting.push_back(symbol);
        return {{}, Result::Waiting, {}};
    case XKB_COMPOSE_COMPOSED: {
        Result result{{}, Result::Composed, Composed()};
        Reset();
        return result;
    }
    case XKB_COMPOSE_CANCELLED: {
        std::u16string before = Flush();
        Result result = Feed(symbol);
        result.before = std::move(before);
        return result;
    }
    case XKB_COMPOSE_NOTHING:
        break;
    }
    return {};
}

std::u16string Composer::Flush()
{
    std::u16string text;
    for (const xkb_keysym_t dead : m_waiting)
        text += Alone(dead);
    Reset();
    return text;
}

void Composer::Reset()
{
    m_waiting.clear();
    if (HasTable())
        xkb_compose_state_reset(m_state.get());
}

std::u16string Composer::Composed() const
{
    std::u16string text = TextOf(m_state.get());
    if (m_acuteMakesCedilla && text == u"ć")
        return u"ç";
    if (m_acuteMakesCedilla && text == u"Ć")
        return u"Ç";
    return text;
}

// As if the space bar came behind it.
std::u16string Composer::Alone(xkb_keysym_t dead)
{
    xkb_compose_state_reset(m_scratch.get());
    xkb_compose_state_feed(m_scratch.get(), dead);
    xkb_compose_state_feed(m_scratch.get(), XKB_KEY_space);
    return TextOf(m_scratch.get());
}

std::vector<std::u16string> Composer::Compositions(const std::vector<xkb_keysym_t> &symbols)
{
    std::vector<std::u16string> texts;
    Reset();
    Extend(symbols, texts);
    Reset();
    return texts;
}

void Composer::Extend(const std::vector<xkb_keysym_t> &symbols, std::vector<std::u16string> &texts)
{
    const std::vector<xkb_keysym_t> begun = m_waiting;
    for (const xkb_keysym_t symbol : symbols) {
        Reset();
        for (const xkb_keysym_t before : begun)
            Feed(before);
        Result result = Feed(symbol);
        if (result.step == Result::Composed)
            texts.push_back(std::move(result.text));
        // One that the others do not go with has begun anew.
        else if (m_waiting.size() > begun.size() && m_waiting.size() < kLongestSequence)
            Extend(symbols, texts);
    }
}

} // namespace layouts
