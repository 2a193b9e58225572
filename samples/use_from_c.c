/* Gets a valid settings record out of the driver in C.
 *
 *   cc use_from_c.c $(pkg-config --cflags --libs heron) -o use_from_c && ./use_from_c PRINTER
 */
#include <heron/heron.h>
#include <stdio.h>

/* ASCII as the driver takes text. */
static void to_utf16(const char* text, heron_char* out, size_t room) {
  size_t i = 0;
  for (; text[i] != '\0' && i + 1 < room; ++i) out[i] = (unsigned char)text[i];
  out[i] = 0;
}

int main(int argc, char** argv) {
  if (argc != 2) {
    fprintf(stderr, "usage: %s PRINTER\n", argv[0]);
    return 2;
  }
  heron_char name[221];
  to_utf16(argv[1], name, sizeof name / sizeof *name);

  heron_handle printer;
  if (!OpenPrinterW(name, &printer, NULL)) {
    fprintf(stderr, "can't open the printer \"%s\" (error %u); `heron printer list` names all\n", argv[1],
            GetLastError());
    return 1;
  }
  static union {
    heron_public_record fields;
    uint8_t bytes[HERON_RECORD_SIZE];
  } record;
  const int32_t size = DrvDocumentProperties(NULL, printer, name, NULL, NULL, 0);
  const int32_t done = size == HERON_RECORD_SIZE
                           ? DrvDocumentProperties(NULL, printer, name, &record.fields, NULL, HERON_DM_COPY)
                           : -1;
  ClosePrinter(printer);
  if (done != 1) {
    fprintf(stderr, "the driver gave no record\n");
    return 1;
  }
  printf("record       %d bytes: %u public, %u private\n", size, record.fields.dmSize, record.fields.dmDriverExtra);
  printf("paper        code %d, %.1f x %.1f mm, %s\n", record.fields.dmPaperSize, record.fields.dmPaperWidth / 10.0,
         record.fields.dmPaperLength / 10.0, record.fields.dmOrientation == 2 ? "landscape" : "portrait");
  return 0;
}
