#pragma once

// Texts are UTF-8 everywhere in memory; the files of the system hold windows-1252. The conversion
// between the two, letter case, and small helpers.

#include <string>
#include <string_view>

namespace larkstone {

/// Without blanks, tabs and line ends at both ends.
std::string_view trimmed(std::string_view text);

/// Lower-cased: ASCII, Latin (so all letters of windows-1252), Greek and Cyrillic.
std::string lowered(std::string_view utf8);

/// Upper-case counterpart of lowered() over the letters of windows-1252.
std::string uppered(std::string_view utf8);

/// With "&", "<" and ">" as references, for HTML and XML.
std::string escapedMarkup(std::string_view utf8);

/// Whether two texts are equal without regard to case.
bool equalNoCase(std::string_view a, std::string_view b);

/// The first bytes of a text, to the end of a character.
std::string_view beginningOf(std::string_view utf8, std::size_t most);

/// A name of which every runner of a category or team gets a copy. A hostile file can give
/// thousands of runners one that is as long as the file: what is longer than any name is cut.
inline std::string_view sharedName(std::string_view utf8) { return beginningOf(utf8, 255); }

/// Takes the first character (its whole UTF-8 sequence) off the text; empty at the end.
std::string_view takeCharacter(std::string_view& utf8);

/// Whether the bytes are well-formed UTF-8.
bool isUtf8(std::string_view bytes);

/// The bytes of the code page as UTF-8. Every byte has a character.
std::string utf8FromWindows1252(std::string_view bytes);

/// UTF-8 as one byte a character. A letter that the code page lacks is written as its plainest
/// relative (ř as r, Ł as L), anything else it lacks as "?". Bytes that are not UTF-8 stay.
std::string windows1252FromUtf8(std::string_view utf8);

/// The byte of a character in the code page, by the same rule.
char windows1252Byte(char32_t character);

/// Appends one character as UTF-8; nothing for a value that is no character.
void appendUtf8(std::string& text, char32_t character);

/// Lower and upper case of one byte of the code page.
char lowered1252(char byte);
char uppered1252(char byte);
std::string lowered1252(std::string_view bytes);

}  // namespace larkstone
