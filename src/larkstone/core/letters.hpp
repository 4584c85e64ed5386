#pragma once

// What Unicode knows of single characters. The tables stand in letters.def.

namespace larkstone {

/// The small letter of a character, so that letters with the same capital have the same one.
char32_t lowerOf(char32_t character);

/// The capital of a character; itself where that would be several letters (ß).
char32_t upperOf(char32_t character);

/// The byte of windows-1252 that comes nearest to a character it lacks; "?" when none does.
char plainestRelative(char32_t character);

}  // namespace larkstone
