// SPDX-License-Identifier: Apache-2.0
#include "platform/screen/fonts.h"

#include <cstdlib>
#include <memory>
#include <type_traits>

#include <fontconfig/fontconfig.h>

#include "platform/own_log.h"

namespace pbe {
namespace {

// The looks are the view's own, not the installed system's. Where a character is missing, the font matcher
// goes on to every other font, those for the character's language first.
constexpr const char *kRules = R"(<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "urn:fontconfig:fonts.dtd">
<fontconfig>
  <cachedir>/var/cache/fontconfig</cachedir>
  <match target="pattern">
    <edit name="hintstyle" mode="append"><const>hintslight</const></edit>
    <edit name="lcdfilter" mode="append"><const>lcddefault</const></edit>
  </match>
  <match target="pattern">
    <test name="family"><string>monospace</string></test>
    <edit name="family" mode="append" binding="same"><string>DejaVu Sans Mono</string></edit>
  </match>
  <match target="pattern">
    <test name="family"><string>serif</string></test>
    <edit name="family" mode="append" binding="same"><string>DejaVu Serif</string></edit>
  </match>
  <match target="pattern">
    <edit name="family" mode="append_last"><string>DejaVu Sans</string></edit>
  </match>
</fontconfig>
)";

constexpr const char *kDirectories[] = {"/usr/share/fonts", "/usr/local/share/fonts"};
// Deeper lies no font: a loop of links ends here.
constexpr int kDeepestDirectory = 8;

template <auto Release>
struct Releaser
{
    template <typename Object>
    void operator()(Object *object) const
    {
        Release(object);
    }
};

using Configuration = std::unique_ptr<FcConfig, Releaser<FcConfigDestroy>>;
using FontSet = std::unique_ptr<FcFontSet, Releaser<FcFontSetDestroy>>;
using Directories = std::unique_ptr<FcStrSet, Releaser<FcStrSetDestroy>>;
using DirectoryList = std::unique_ptr<FcStrList, Releaser<FcStrListDone>>;
using Cache = std::unique_ptr<FcCache, Releaser<FcDirCacheUnload>>;

const FcChar8 *Text(const char *text)
{
    return reinterpret_cast<const FcChar8 *>(text);
}

// Pictures of letters in one size, of which an old X server brings hundreds; those in colour do scale.
bool IsPlainBitmap(const FcPattern *face)
{
    FcBool outline = FcTrue;
    FcBool colour = FcFalse;
    FcPatternGetBool(face, FC_OUTLINE, 0, &outline);
    FcPatternGetBool(face, FC_COLOR, 0, &colour);
    return !outline && !colour;
}

void AddFaces(const FcFontSet &found, FcFontSet *faces)
{
    for (int i = 0; i < found.nfont; ++i) {
        if (IsPlainBitmap(found.fonts[i]))
            continue;
        FcPatternReference(found.fonts[i]);
        if (!FcFontSetAdd(faces, found.fonts[i]))
            FcPatternDestroy(found.fonts[i]);
    }
}

void AddDirectory(FcConfig *configuration, const FcChar8 *directory, FcFontSet *faces, int depth);

void AddCached(FcConfig *configuration, const FcCache &cache, FcFontSet *faces, int depth)
{
    const FontSet found(FcCacheCopySet(&cache));
    if (found)
        AddFaces(*found, faces);
    for (int i = 0; i < FcCacheNumSubdir(&cache); ++i)
        AddDirectory(configuration, FcCacheSubdir(&cache, i), faces, depth + 1);
}

// Opens each font; the configuration in force has to be this one, or the system's would be read for it.
void AddScanned(FcConfig *configuration, const FcChar8 *directory, FcFontSet *faces, int depth)
{
    const FontSet found(FcFontSetCreate());
    const Directories below(FcStrSetCreate());
    if (!found || !below || !FcDirScan(found.get(), below.get(), nullptr, nullptr, directory, FcTrue))
        return;
    AddFaces(*found, faces);
    const DirectoryList list(FcStrListCreate(below.get()));
    while (const FcChar8 *next = list ? FcStrListNext(list.get()) : nullptr)
        AddDirectory(configuration, next, faces, depth + 1);
}

// The system's cache is read where it is up to date, and left as it is where it is not.
void AddDirectory(FcConfig *configuration, const FcChar8 *directory, FcFontSet *faces, int depth)
{
    if (depth > kDeepestDirectory)
        return;
    const Cache cache(FcDirCacheLoad(directory, configuration, nullptr));
    if (cache)
        AddCached(configuration, *cache, faces, depth);
    else
        AddScanned(configuration, directory, faces, depth);
}

// Whether any font was found.
bool Load(FcConfig *configuration)
{
    if (!FcConfigParseAndLoadFromMemory(configuration, Text(kRules), FcTrue) ||
        !FcConfigBuildFonts(configuration) || !FcConfigSetCurrent(configuration))
        return false;
    FcFontSet *faces = FcConfigGetFonts(configuration, FcSetSystem);
    if (!faces)
        return false;
    for (const char *directory : kDirectories)
        AddDirectory(configuration, Text(directory), faces, 0);
    return faces->nfont > 0;
}

} // namespace

void UseOwnFonts()
{
    // Whoever names a configuration gets that one.
    if (std::getenv("FONTCONFIG_FILE"))
        return;
    const Configuration configuration(FcConfigCreate());
    if (configuration && Load(configuration.get()))
        return;
    LogOwn(kErrors, "no font below /usr/share/fonts: install fonts-dejavu-core, or texts stay invisible");
    FcConfigSetCurrent(nullptr);
}

} // namespace pbe
