// SPDX-License-Identifier: Apache-2.0
#include "volume/token/uri.h"

#include <cstdlib>
#include <new>

namespace token {
Uri MakeUri()
{
    Uri uri(p11_kit_uri_new());
    if (!uri)
        throw std::bad_alloc();
    return uri;
}

Uri ParseUri(const std::string &text)
{
    Uri uri = MakeUri();
    const bool read = p11_kit_uri_parse(text.c_str(), P11_KIT_URI_FOR_ANY, uri.get()) == P11_KIT_URI_OK;
    return read && !p11_kit_uri_any_unrecognized(uri.get()) ? std::move(uri) : nullptr;
}

std::string FormatUri(P11KitUri *uri)
{
    char *text = nullptr;
    if (p11_kit_uri_format(uri, P11_KIT_URI_FOR_OBJECT_ON_TOKEN, &text) != P11_KIT_URI_OK)
        throw std::bad_alloc();
    const std::unique_ptr<char, decltype(&std::free)> owned(text, &std::free);
    return text;
}

bool HoldsPin(P11KitUri *uri)
{
    return p11_kit_uri_get_pin_value(uri) || p11_kit_uri_get_pin_source(uri);
}

std::string UriAttribute(P11KitUri *uri, CK_ATTRIBUTE_TYPE type)
{
    const CK_ATTRIBUTE *attribute = p11_kit_uri_get_attribute(uri, type);
    return attribute ? std::string(static_cast<const char *>(attribute->pValue), attribute->ulValueLen) : "";
}

} // namespace token
