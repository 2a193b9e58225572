#!/usr/bin/env python3
"""Makes the three caller records of this folder: what applications of various origin hand to a printer driver.

    make_records.py [FOLDER]      writes into FOLDER, by default this one

bare-220.bin        An application that knows only the public part: 220 bytes, nothing private. It wants landscape, A4,
                    three copies, two-sided along the long edge.
foreign-driver.bin  Another driver's record: 220 public bytes and 500 private ones with that driver's own mark. It names
                    its paper by size only (210.0 x 297.0 mm), wants 300 dpi and 5000 copies, and a paper source that
                    this printer hasn't got.
older-212.bin       A record from before the public part grew to 220 bytes: 212 of the older version 0x400, and 64 private
                    ones. It wants portrait, paper code 8 (A3), two copies, one-sided.

The public part is little-endian and packed:

    offset  size  field
         0    64  dmDeviceName, 32 UTF-16 characters, zero-filled
        64     2  dmSpecVersion
        66     2  dmDriverVersion
        68     2  dmSize: bytes of the public part
        70     2  dmDriverExtra: bytes of the private part behind it
        72     4  dmFields: which of the following fields count
        76     2  dmOrientation      86     2  dmCopies            96     2  dmYResolution
        78     2  dmPaperSize        88     2  dmDefaultSource     98     2  dmTTOption
        80     2  dmPaperLength      90     2  dmPrintQuality     100     2  dmCollate
        82     2  dmPaperWidth       92     2  dmColor            102    64  dmFormName
        84     2  dmScale            94     2  dmDuplex           166   ...  zeros up to dmSize
"""

import os
import struct
import sys

DM_ORIENTATION = 0x1
DM_PAPERSIZE = 0x2
DM_PAPERLENGTH = 0x4
DM_PAPERWIDTH = 0x8
DM_COPIES = 0x100
DM_DEFAULTSOURCE = 0x200
DM_PRINTQUALITY = 0x400
DM_DUPLEX = 0x1000

NUMBERS = ("orientation", "paper_size", "paper_length", "paper_width", "scale", "copies", "source", "quality", "color",
           "duplex", "y_resolution", "tt_option", "collate")


def record(device, spec_version, version, size, private=b"", fields=0, **values):
    """A record of `size` public bytes and `private` behind them; fields that aren't given are 0."""
    header = device.encode("utf-16-le").ljust(64, b"\0")
    header += struct.pack("<4HI", spec_version, version, size, len(private), fields)
    header += struct.pack("<13h", *(values.get(name, 0) for name in NUMBERS))
    return header.ljust(size, b"\0") + private


def records():
    """Name and bytes of every sample."""
    yield "bare-220.bin", record(
        "Any printer", 0x401, 0, 220,
        fields=DM_ORIENTATION | DM_PAPERSIZE | DM_COPIES | DM_DUPLEX,
        orientation=2, paper_size=9, copies=3, duplex=2)
    yield "foreign-driver.bin", record(
        "Laser in the hall", 0x401, 0x0600, 220,
        private="ELSE".encode("utf-16-le") + bytes(i * 7 % 256 for i in range(492)),
        fields=DM_PAPERLENGTH | DM_PAPERWIDTH | DM_COPIES | DM_DEFAULTSOURCE | DM_PRINTQUALITY,
        paper_length=2970, paper_width=2100, copies=5000, source=15, quality=300)
    yield "older-212.bin", record(
        "Old office", 0x400, 0x0301, 212,
        private=b"PREV" + bytes(60),
        fields=DM_ORIENTATION | DM_PAPERSIZE | DM_COPIES | DM_DUPLEX,
        orientation=1, paper_size=8, copies=2, duplex=1)


def main():
    folder = sys.argv[1] if len(sys.argv) > 1 else os.path.dirname(os.path.abspath(__file__))
    for name, data in records():
        with open(os.path.join(folder, name), "wb") as file:
            file.write(data)


if __name__ == "__main__":
    main()
