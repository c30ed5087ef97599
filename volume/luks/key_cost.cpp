// SPDX-License-Identifier: Apache-2.0
#include "volume/luks/key_cost.h"

#include <algorithm>
#include <thread>

#include <libcryptsetup.h>

#include "base/memory.h"

namespace volume {
namespace {

constexpr std::uint64_t kMaxMemory = 512 * 1024; // KiB
constexpr std::uint64_t kMemoryShare = 4;        // of the computer's memory: one quarter
constexpr std::uint64_t kMinMemory = 32;
constexpr std::uint32_t kMaxThreads = 4;
constexpr std::uint32_t kRandomSecretIterations = 1000;
constexpr std::size_t kSaltBytes = 32;

} // namespace

KeyCost KeyCost::ForPassword(std::uint32_t milliseconds)
{
    const std::uint64_t share = base::TotalMemory() / kMemoryShare;
    KeyCost cost;
    cost.m_type = CRYPT_KDF_ARGON2ID;
    cost.m_hash = "sha256";
    cost.m_milliseconds = milliseconds;
    cost.m_memory = static_cast<std::uint32_t>(std::clamp(share, kMinMemory, kMaxMemory));
    cost.m_threads = std::clamp(std::thread::hardware_concurrency(), 1u, kMaxThreads);
    return cost;
}

KeyCost KeyCost::ForRandomSecret()
{
    KeyCost cost;
    cost.m_type = CRYPT_KDF_PBKDF2;
    cost.m_hash = "sha512";
    cost.m_iterations = kRandomSecretIterations;
    return cost;
}

bool KeyCost::OfKeyslot(crypt_device *device, int keyslot, KeyCost *cost)
{
    crypt_pbkdf_type type{};
    if (crypt_keyslot_get_pbkdf(device, keyslot, &type) < 0 || !type.type)
        return false;
    cost->m_type = type.type;
    cost->m_hash = type.hash ? type.hash : "sha256";
    cost->m_milliseconds = 0;
    cost->m_iterations = type.iterations;
    cost->m_memory = type.max_memory_kb;
    cost->m_threads = type.parallel_threads;
    return true;
}

crypt_pbkdf_type KeyCost::Parameters() const
{
    crypt_pbkdf_type type{};
    type.type = m_type.c_str();
    type.hash = m_hash.c_str();
    type.time_ms = m_milliseconds;
    type.iterations = m_iterations;
    type.max_memory_kb = m_memory;
    type.parallel_threads = m_threads;
    type.flags = m_iterations > 0 ? CRYPT_PBKDF_NO_BENCHMARK : 0;
    return type;
}

int KeyCost::Measure(crypt_device *device)
{
    constexpr char kSample[] = "measures the computer, not the password";
    if (m_iterations > 0)
        return 0;
    crypt_pbkdf_type type = Parameters();
    const int keyBytes = crypt_get_volume_key_size(device);
    const int result =
        crypt_benchmark_pbkdf(device, &type, kSample, sizeof kSample, kSample, kSaltBytes,
                              static_cast<std::size_t>(std::max(keyBytes, 1)), nullptr, nullptr);
    if (result < 0)
        return result;
    m_milliseconds = 0;
    m_iterations = type.iterations;
    m_memory = type.max_memory_kb;
    m_threads = type.parallel_threads;
    return 0;
}

int KeyCost::ApplyTo(crypt_device *device) const
{
    const crypt_pbkdf_type type = Parameters();
    return crypt_set_pbkdf_type(device, &type);
}

std::string KeyCost::ToText() const
{
    return m_type + ' ' + m_hash + ' ' + std::to_string(m_iterations) + ' ' + std::to_string(m_memory);
}

bool KeyCost::ExceedsMemory() const
{
    const std::uint64_t available = base::AvailableMemory();
    return available > 0 && m_memory > available;
}

std::string KeyCost::Describe() const
{
    return m_memory > 0 ? m_type + ", " + std::to_string(m_memory / 1024) + " MiB"
                        : m_type + ", " + std::to_string(m_iterations) + " iterations";
}

} // namespace volume
