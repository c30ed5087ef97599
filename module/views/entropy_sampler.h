// SPDX-License-Identifier: Apache-2.0
// Turns keys and moves of the pointer into random bytes. A byte comes from what was done and from the moment
// at which it was done; doing the same again adds nothing.
#pragma once

#include <cstdint>
#include <optional>

#include <QPoint>

namespace pba {

class EntropySampler
{
public:
    // `key` is the toolkit's code, of a press or a release. None when it is the same key as the last time.
    std::optional<std::uint8_t> SampleKey(int key, std::uint64_t counter);
    // `position` within the widget below the pointer. None until enough moves have come.
    std::optional<std::uint8_t> SampleMove(QPoint position, std::uint64_t counter);

private:
    std::uint64_t m_lastCounter = 0;
    int m_lastKey = 0;
    QPoint m_lastPosition;
    int m_moves = 0;
    int m_movesNeeded = 10;
};

} // namespace pba
