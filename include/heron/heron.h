/* The Heron printer driver for programs in C: the twelve exported functions of libheron.so, and the calls of
 * libheron_platform.so with which a program opens a queue. Build with `pkg-config --cflags --libs heron`.
 *
 * Text is zero-terminated UTF-16 in host byte order (heron_char), not wchar_t. A settings record is HERON_RECORD_SIZE
 * bytes, packed, little-endian: a public part of 220 bytes (heron_public_record) and 3108 private bytes. A record
 * declares its size itself: dmSize bytes of the public part, then dmDriverExtra bytes.
 *
 * BOOL results are 1 on success and 0 on failure, with the reason in GetLastError of the calling thread; results of
 * other types say in their comment what failure gives. On failure no output is written. The caller
 * frees its own buffers; a printer opened by OpenPrinterW is closed once, by ClosePrinter. Functions may be called from
 * any thread.
 */
#ifndef HERON_HERON_H
#define HERON_HERON_H

#include <stdint.h>

#ifdef __cplusplus
#include <uchar.h>
extern "C" {
typedef char16_t heron_char;
#else
typedef uint16_t heron_char;
#endif

typedef void* heron_handle;

enum {
  HERON_RECORD_SIZE = 3328,
  HERON_PUBLIC_SIZE = 220,
  HERON_EXTRA_SIZE = 1901 /* what QX_GetEnvExtraSize returns */
};

/* Reasons of a failure, as GetLastError and the functions that return a reason give them. */
enum {
  HERON_SUCCESS = 0,
  HERON_FILE_NOT_FOUND = 2, /* there is no such value */
  HERON_ACCESS_DENIED = 5,
  HERON_INVALID_HANDLE = 6,
  HERON_NOT_ENOUGH_MEMORY = 8,
  HERON_GENERAL_FAILURE = 31,
  HERON_NEWER_STORE = 50, /* the store was written by a newer release */
  HERON_INVALID_PARAMETER = 87,
  HERON_DISK_FULL = 112,
  HERON_INSUFFICIENT_BUFFER = 122, /* the needed size was stored */
  HERON_INVALID_LEVEL = 124,
  HERON_BUSY = 170,
  HERON_MORE_DATA = 234, /* the same for printer data */
  HERON_INVALID_PRINTER_NAME = 1801,
  HERON_PRINTER_DELETED = 1905
};

/* Bits of a mode. */
enum {
  HERON_DM_UPDATE = 1,
  HERON_DM_COPY = 2,   /* write the record to the output */
  HERON_DM_PROMPT = 4, /* shows nothing in functions without a sheet */
  HERON_DM_MODIFY = 8, /* take the input record into account */
  HERON_DM_NOPERMISSION = 32
};

/* Types of a stored value. */
enum { HERON_REG_SZ = 1, HERON_REG_BINARY = 3, HERON_REG_DWORD = 4 };

/* The public part of a settings record. Sizes in tenths of a millimetre, resolutions in dots per inch. */
#pragma pack(push, 1)
typedef struct heron_public_record {
  heron_char dmDeviceName[32];
  uint16_t dmSpecVersion;
  uint16_t dmDriverVersion;
  uint16_t dmSize;        /* bytes of the public part */
  uint16_t dmDriverExtra; /* bytes behind it */
  uint32_t dmFields;
  int16_t dmOrientation; /* 1 portrait, 2 landscape */
  int16_t dmPaperSize;
  int16_t dmPaperLength;
  int16_t dmPaperWidth;
  int16_t dmScale;
  int16_t dmCopies;
  int16_t dmDefaultSource;
  int16_t dmPrintQuality;
  int16_t dmColor;
  int16_t dmDuplex;
  int16_t dmYResolution;
  int16_t dmTTOption;
  int16_t dmCollate;
  heron_char dmFormName[32];
  uint8_t reserved[54];
} heron_public_record;
#pragma pack(pop)

typedef struct heron_document_header {
  uint16_t cbSize;
  uint16_t Reserved;
  heron_handle hPrinter;
  heron_char* pszPrinterName; /* may be null */
  heron_public_record* pdmIn;
  heron_public_record* pdmOut;
  uint32_t cbOut;
  uint32_t fMode;
} heron_document_header;

/* What a host of property sheets hands to a sheet function; see PROPSHEETUI_INFO in platform/api/devmode.h. */
struct heron_sheet_info;

/* -- the driver: libheron.so ------------------------------------------------------------------------------------- */

/* Reason 1 keeps `instance`. Always 1. */
int32_t DllInitialize(heron_handle instance, uint32_t reason, void* reserved);

/* With `mode` 0 the size of a record. Otherwise 1 with the resolved record at `output` if that isn't null, or -1.
 * HERON_DM_COPY requires an `output` of HERON_RECORD_SIZE bytes. `input` may be null. Shows no window. */
int32_t DrvDocumentProperties(void* window, heron_handle printer, heron_char* device_name, heron_public_record* output,
                              heron_public_record* input, uint32_t mode);
/* 1 with the resolved record at `output`, which is required, or -1. */
int32_t DrvAdvancedDocumentProperties(void* window, heron_handle printer, heron_char* device_name,
                                      heron_public_record* output, heron_public_record* input);
/* With `info` null, `parameter` is the address of a heron_document_header: the record's size, 1, or -1. */
int32_t DrvDocumentPropertySheets(struct heron_sheet_info* info, intptr_t parameter);
/* The sheet of the printer's own options; `info` null gives -1. */
int32_t DrvDevicePropertySheets(struct heron_sheet_info* info, intptr_t parameter);
/* Always 1; the options are reached through DrvDevicePropertySheets. */
int32_t PrinterProperties(void* window, heron_handle printer);
/* Count or value of a capability (DC_...), or (uint32_t)-1. `output` must have room for the answer, or is null. */
uint32_t DrvDeviceCapabilities(heron_handle printer, heron_char* device_name, uint16_t capability, void* output,
                               heron_public_record* input);
/* 1, or 0 with a last error. `*needed`: in, room at `output`; out, the size needed. */
int32_t DrvConvertDevMode(heron_char* printer_name, heron_public_record* input, heron_public_record* output,
                          uint32_t* needed, uint32_t mode);
/* 1; 0 if the event of a new printer (3) can't be served. */
int32_t DrvPrinterEvent(heron_char* printer_name, int32_t event, uint32_t flags, intptr_t parameter);
/* A step of a document: 1; 0 or -1 on failure. See platform/api/document_events.h for the events. */
int32_t DrvDocumentEvent(heron_handle printer, void* context, int32_t event, uint32_t in_size, void* in,
                         uint32_t out_size, void* out);
/* Always 1: every job can be printed. */
int32_t DevQueryPrintEx(void* query);
/* HERON_EXTRA_SIZE. */
uint32_t QX_GetEnvExtraSize(void);

/* -- the platform: libheron_platform.so --------------------------------------------------------------------------- */

/* Opens the queue `name`, made by `heron printer add`. `defaults` is null. */
int32_t OpenPrinterW(const heron_char* name, heron_handle* printer, const void* defaults);
int32_t ClosePrinter(heron_handle printer);
/* Level 1 or 2; the structures are those of platform/api/spooler.h. `*needed` always receives the size in bytes. */
int32_t GetPrinterW(heron_handle printer, uint32_t level, uint8_t* buffer, uint32_t size, uint32_t* needed);
/* One value of printer data; the result is the reason, HERON_SUCCESS on success. `type` may be null. */
uint32_t GetPrinterDataW(heron_handle printer, const heron_char* name, uint32_t* type, uint8_t* buffer, uint32_t size,
                         uint32_t* needed);
/* Stores one value whole and durably; the result is the reason. */
uint32_t SetPrinterDataW(heron_handle printer, const heron_char* name, uint32_t type, const uint8_t* data,
                         uint32_t size);
/* Reason of the calling thread's last failed call. */
uint32_t GetLastError(void);

#ifdef __cplusplus
}
#endif
#endif
