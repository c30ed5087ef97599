# SPDX-License-Identifier: Apache-2.0
# A catalogue of the translation tools as lines: each text in English, and below it its translation. For the
# console, where there is no toolkit to read the other form.
/<source>/ { source = content("source") }
/<translation>/ { print source; print content("translation") }

function content(tag,    text) {
    text = $0
    sub(".*<" tag ">", "", text)
    sub("</" tag ">.*", "", text)
    gsub(/&quot;/, "\"", text)
    gsub(/&apos;/, "'", text)
    gsub(/&lt;/, "<", text)
    gsub(/&gt;/, ">", text)
    gsub(/&amp;/, "\\&", text)
    return text
}
