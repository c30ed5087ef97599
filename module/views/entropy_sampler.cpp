// SPDX-License-Identifier: Apache-2.0
#include "module/views/entropy_sampler.h"

#include <QRandomGenerator>

namespace pba {

namespace {

constexpr int kRandomRange = 32768;

int Draw()
{
    return static_cast<int>(QRandomGenerator::global()->bounded(kRandomRange));
}

} // namespace

std::optional<std::uint8_t> EntropySampler::SampleKey(int key, std::uint64_t counter)
{
    if (key == m_lastKey)
        return std::nullopt;
    m_lastKey = key;
    const std::uint64_t delta = counter - m_lastCounter;
    m_lastCounter = counter;
    return static_cast<std::uint8_t>((key & 0x3F) | ((delta * 64) & 0xFF));
}

std::optional<std::uint8_t> EntropySampler::SampleMove(QPoint position, std::uint64_t counter)
{
    if (position == m_lastPosition)
        return std::nullopt;
    // Every move draws, so that their number decides which draw is used below.
    Draw();
    if (++m_moves < m_movesNeeded)
        return std::nullopt;
    m_moves = 0;
    m_movesNeeded = Draw() / 3276 + 5;
    m_lastPosition = position;
    const auto place =
        static_cast<unsigned>(position.x()) * 16 | (static_cast<unsigned>(position.y()) & 0x0F);
    return static_cast<std::uint8_t>(place ^ counter);
}

} // namespace pba
