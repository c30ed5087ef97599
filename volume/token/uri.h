// SPDX-License-Identifier: Apache-2.0
// PKCS#11 URIs, the names of tokens and of the objects on them.
#pragma once

#include <memory>
#include <string>

#include <p11-kit/p11-kit.h>
#include <p11-kit/uri.h>

namespace token {

struct FreeUri
{
    void operator()(P11KitUri *uri) const { p11_kit_uri_free(uri); }
};
using Uri = std::unique_ptr<P11KitUri, FreeUri>;

// Throws std::bad_alloc only.
Uri MakeUri();
// Null when `text` is no URI of a token, or says what this library does not know and so could not obey.
Uri ParseUri(const std::string &text);
std::string FormatUri(P11KitUri *uri);
// Whether a PIN stands in it.
bool HoldsPin(P11KitUri *uri);
// An attribute of an object that the URI asks for, as bytes; empty when it asks for none.
std::string UriAttribute(P11KitUri *uri, CK_ATTRIBUTE_TYPE type);

} // namespace token
