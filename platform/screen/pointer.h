// SPDX-License-Identifier: Apache-2.0
// Whether the pointer may be seen: the wish of the view, and how it is carried out.
//
// Under X11 the server hides it over all windows. On a framebuffer the toolkit itself draws it only while a
// mouse is connected, and offscreen there is none: there the wish is only kept.
#pragma once

namespace pbe {

class Pointer
{
public:
    Pointer() = default;
    ~Pointer() { SetVisible(true); }
    Pointer(const Pointer &) = delete;
    Pointer &operator=(const Pointer &) = delete;

    void SetVisible(bool visible);
    bool IsVisible() const { return m_visible; }

private:
    bool m_visible = true;
};

} // namespace pbe
