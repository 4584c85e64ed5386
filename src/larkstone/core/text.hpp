#pragma once

// Texts are UTF-8 everywhere in memory; the files of the system hold windows-1252. The conversion
// between the two, letter case, and small helpers.

#include <string>
#include <string_view>

namespace larkstone {

/// Without blanks, tabs and line ends at both ends.
std::string_view trimmed(std::string_view text);

/// Lower-cased letter by letter, in every script that has case, for comparing and finding. Letters
/// with the same capital become the same: the final sigma a sigma, and, as no language is known,
/// I, İ, ı and i all "i". Lower-cased texts are in order by their bytes.
std::string lowered(std::string_view utf8);

/// Upper-cased letter by letter; a letter whose capital would be two letters (ß) stays.
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

/// UTF-8 as one byte a character. What the code page lacks is written as its plainest relative:
/// the letter without its marks (ř as r, ậ as a), else by sound (Ł as L, Ж as Z), else "?"; a mark
/// behind its letter is left out. Bytes that are not UTF-8 stay.
std::string windows1252FromUtf8(std::string_view utf8);

/// Whether the code page has every character of a text, so that windows1252FromUtf8() loses
/// nothing. Bytes that are not UTF-8 are taken for bytes of the page.
bool windows1252Holds(std::string_view utf8);

/// The byte of a character in the code page, by the same rule; a mark alone is "?".
char windows1252Byte(char32_t character);

/// Appends one character as UTF-8; nothing for a value that is no character.
void appendUtf8(std::string& text, char32_t character);

/// Lower and upper case of one byte of the code page; a letter whose other case it lacks stays.
char lowered1252(char byte);
char uppered1252(char byte);
std::string lowered1252(std::string_view bytes);

}  // namespace larkstone
