#!/usr/bin/env python3
"""Gets a valid settings record out of the driver from another language.

    use_from_python.py PRINTER [LIBRARY_FOLDER]

Opens the queue PRINTER (made by `heron printer add PRINTER`) through libheron_platform.so and asks libheron.so for its
record: first how large it is, then the record itself. LIBRARY_FOLDER is build/release/lib by default.

Texts are zero-terminated UTF-16, which is not what ctypes calls wide on Linux: utf16() makes them.
"""

import ctypes
import os
import struct
import sys

DM_COPY = 2
HERE = os.path.dirname(os.path.abspath(__file__))


def utf16(text):
    """A text as the driver takes it."""
    return ctypes.create_string_buffer(text.encode("utf-16-le") + b"\0\0")


def load(folder):
    """Both libraries with the operations used here. The driver finds the platform library beside itself."""
    platform = ctypes.CDLL(os.path.join(folder, "libheron_platform.so"), mode=ctypes.RTLD_GLOBAL)
    driver = ctypes.CDLL(os.path.join(folder, "libheron.so"))
    platform.OpenPrinterW.argtypes = [ctypes.c_void_p, ctypes.POINTER(ctypes.c_void_p), ctypes.c_void_p]
    platform.OpenPrinterW.restype = ctypes.c_int32
    platform.ClosePrinter.argtypes = [ctypes.c_void_p]
    platform.GetLastError.restype = ctypes.c_uint32
    driver.DrvDocumentProperties.argtypes = [ctypes.c_void_p] * 5 + [ctypes.c_uint32]
    driver.DrvDocumentProperties.restype = ctypes.c_int32
    return platform, driver


def valid_record(platform, driver, name):
    """The record that an application gets for the printer `name`."""
    printer = ctypes.c_void_p()
    if not platform.OpenPrinterW(utf16(name), ctypes.byref(printer), None):
        sys.exit(f"can't open the printer {name!r} (error {platform.GetLastError()}); `heron printer list` names all")
    try:
        size = driver.DrvDocumentProperties(None, printer, utf16(name), None, None, 0)
        record = ctypes.create_string_buffer(size)
        if driver.DrvDocumentProperties(None, printer, utf16(name), record, None, DM_COPY) != 1:
            sys.exit("the driver gave no record")
        return record.raw
    finally:
        platform.ClosePrinter(printer)


def main():
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    folder = sys.argv[2] if len(sys.argv) > 2 else os.path.join(HERE, "..", "build", "release", "lib")
    record = valid_record(*load(folder), sys.argv[1])
    device = record[:64].decode("utf-16-le").split("\0")[0]
    spec_version, version, size, private = struct.unpack_from("<4H", record, 64)
    orientation, paper, length, width = struct.unpack_from("<4h", record, 76)
    print(f"printer      {device}")
    print(f"record       {len(record)} bytes: {size} public, {private} private, version {version:#x}")
    print(f"paper        code {paper}, {width / 10} x {length / 10} mm, {'landscape' if orientation == 2 else 'portrait'}")
    print(f"signature    {record[440:448].decode('utf-16-le')}")


if __name__ == "__main__":
    main()
