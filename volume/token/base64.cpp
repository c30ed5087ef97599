// SPDX-License-Identifier: Apache-2.0
#include "volume/token/base64.h"

#include <openssl/evp.h>

namespace token {
namespace {

const unsigned char *Bytes(std::string_view text)
{
    return reinterpret_cast<const unsigned char *>(text.data());
}

// A zero follows what is written.
std::size_t EncodedSize(std::size_t size)
{
    return (size + 2) / 3 * 4;
}

} // namespace

std::string ToBase64(std::string_view bytes)
{
    std::string text(EncodedSize(bytes.size()), '\0');
    EVP_EncodeBlock(reinterpret_cast<unsigned char *>(text.data()), Bytes(bytes),
                    static_cast<int>(bytes.size()));
    return text;
}

base::Secret ToSecretBase64(const base::Secret &bytes)
{
    const std::size_t size = EncodedSize(bytes.Size());
    base::Secret text(size + 1);
    EVP_EncodeBlock(reinterpret_cast<unsigned char *>(text.Buffer()), Bytes(bytes.View()),
                    static_cast<int>(bytes.Size()));
    text.SetSize(size);
    return text;
}

std::optional<std::string> FromBase64(std::string_view text)
{
    constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const std::size_t digits = std::min(text.find_first_not_of(kAlphabet), text.size());
    const std::size_t padding = text.size() - digits;
    if (text.size() % 4 != 0 || padding > 2 || text.substr(digits) != std::string_view("==", padding))
        return std::nullopt;
    std::string bytes(text.size() / 4 * 3, '\0');
    if (EVP_DecodeBlock(reinterpret_cast<unsigned char *>(bytes.data()), Bytes(text),
                        static_cast<int>(text.size())) < 0)
        return std::nullopt;
    bytes.resize(bytes.size() - padding);
    return bytes;
}

} // namespace token
