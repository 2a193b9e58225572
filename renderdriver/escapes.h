// The entry point of the printing half: checks, answers and logs an escape.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "renderdriver/job.h"

namespace heron::renderdriver {

/// The answer to escape `code`. 0 for an escape that doesn't exist, has another size than in its row, comes out of
/// order or says what can't be; then neither the job nor `out` changes. The value of EscGetPageNumber and
/// EscGetPageOrientation is the answer itself. Noted in either case.
int AnswerEscape(Job& job, uint32_t code, std::span<const uint8_t> in, std::span<uint8_t> out);

/// Notes a text that the driver drew.
void NoteDrawing(Job& job, std::u16string_view text);

}  // namespace heron::renderdriver
