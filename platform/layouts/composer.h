// SPDX-License-Identifier: Apache-2.0
// Puts together what several keys type: a dead key and the letter behind it, a ligature's letters.
#pragma once

#include <string>
#include <vector>

#include "platform/layouts/layout_table.h"
#include "platform/layouts/xkb_objects.h"

namespace layouts {

class Composer
{
public:
    struct Result
    {
        // What earlier dead keys type alone, since this key does not go with them. It comes first.
        std::u16string before;
        enum {
            Plain,    // the key types what stands on it
            Waiting,  // types nothing yet
            Composed, // types `text`
        } step = Plain;
        std::u16string text;
    };

    Composer();

    // Without the table of compositions every key is plain, and dead keys type nothing.
    bool HasTable() const { return m_state != nullptr; }

    // Dead keys that wait go on waiting.
    void SetLayout(const Layout &layout);

    Result Feed(xkb_keysym_t symbol);
    bool IsWaiting() const { return !m_waiting.empty(); }
    // Forgets the dead keys and says what they type alone.
    std::u16string Flush();
    void Reset();

    // All that dead keys and ligatures make of these symbols, one after another.
    std::vector<std::u16string> Compositions(const std::vector<xkb_keysym_t> &symbols);

private:
    void Extend(const std::vector<xkb_keysym_t> &symbols, std::vector<std::u16string> &texts);
    std::u16string Composed() const;
    std::u16string Alone(xkb_keysym_t dead);

    XkbComposeState m_state;
    XkbComposeState m_scratch;
    std::vector<xkb_keysym_t> m_waiting;
    bool m_acuteMakesCedilla = false;
};

} // namespace layouts
