#!/bin/sh
# Renders every drawing of this folder to the picture of the same name, at the size that the drawing states.
set -eu
cd "$(dirname "$0")"
for drawing in *.svg; do
    rsvg-convert --output "${drawing%.svg}.png" "$drawing"
done
