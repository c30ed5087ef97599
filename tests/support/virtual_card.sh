#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# A card in the virtual reader of the card service: it is there while this script runs. It only tells its kind;
# both sides put two bytes with the length before what they send.
export LC_ALL=C
exec 2>/dev/null
until exec 3<>/dev/tcp/127.0.0.1/35963; do sleep 0.05; done # the service may still be starting

take_byte()
{
    IFS= read -r -d '' -n 1 -u 3 byte || exit 0 # a zero ends it before its one byte
    printf -v number %d "'$byte"
}

while take_byte && take_byte; do # no request is longer than 255 bytes
    size=$number
    for ((i = 0; i < size; i++)); do take_byte; done
    # The other requests of one byte switch the card's power.
    case $size:$number in
    1:4) printf '\x00\x04\x3b\x02\x14\x50' >&3 ;;
    1:*) ;;
    *) printf '\x00\x02\x6d\x00' >&3 ;; # not understood
    esac
done
