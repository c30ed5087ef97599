#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# Renders every drawing of this folder to the picture of the same name, at the size that the drawing states.
# The pictures are then packed to be read fast: every row as differences to the left, lightly compressed.
set -eu
cd "$(dirname "$0")"
for drawing in *.svg; do
    picture=${drawing%.svg}.png
    rsvg-convert --output "$picture" "$drawing"
    convert "$picture" -strip -define png:compression-level=1 -define png:compression-filter=1 \
        -define png:exclude-chunks=all "PNG00:$picture"
done
