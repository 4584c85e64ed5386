#include "larkstone/import/detection.hpp"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "larkstone/core/text.hpp"
#include "larkstone/import/csv_columns.hpp"
#include "larkstone/import/formats.hpp"
#include "larkstone/import/import.hpp"
#include "larkstone/import/scan/code_pages.hpp"
#include "larkstone/import/scan/fields.hpp"
#include "larkstone/import/scan/scan_file.hpp"
#include "larkstone/import/scan/text_encoding.hpp"
#include "larkstone/platform/file.hpp"

namespace larkstone {

namespace {

constexpr auto nowhere = std::string_view::npos;
constexpr int headSize = 4096;

// The start-number column by which a SportSoftware CSV begins, in the languages of the program;
// those of other code pages as they read in the Western one.
constexpr std::string_view startNumberHeaders[] = {
    "OS0014", "OE0014",   "Stnr", "Stno",       "Startnr", "N° dép.", "Pett", "StÈí",
    "Rajtsz", "³ö·¢±àºÅ", "Ñò¹",  "NrStartowy", "Stbr",    "Dorsal",  "Lnro",
};

constexpr std::string_view splitTimeTitles[] = {
    "Zwischenzeiten Ergebnis",
    "Split time results",
    "Sträcktider",
    "Résultats SPORTident",
    "Classifica SPORTident",
    "Výsledky s mezièasy",
    "SPORTident eredmények",
    "Rastiväliajat",
    "Split resultater",
    "Wyniki z miêdyczasami",
    "SPORTident rezultati",
    "Resultados SPORTident",
    "SPORTident Ergebnis",
    "SPORTident results",
    "SPORTident sträcktider",
    "SPORTident výsledky",
    "SPORTident resultater",
    "SPORTident ½á¹û",
    "Ðåçóëüòàò SPORTident",
    "Parciales",
};

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isStartNumberHeader(std::string_view utf8) {
  return std::find(std::begin(startNumberHeaders), std::end(startNumberHeaders), utf8) !=
         std::end(startNumberHeaders);
}

bool hasStartNumberHeader(const std::string& path) {
  ScanFile file(path);
  const std::string head = utf8FromWindows1252(file.peek(64));
  const auto begins = [&](std::string_view header) { return head.starts_with(header); };
  if (std::none_of(std::begin(startNumberHeaders), std::end(startNumberHeaders), begins)) {
    return false;  // and a line of any length need not be read
  }
  std::string header;
  std::string row;
  if (!file.readLine(header) || !file.readLine(row)) return false;
  const std::string_view delimiter =
      row.empty() ? std::string_view() : std::string_view(row).substr(row.size() - 1);
  return isStartNumberHeader(utf8FromWindows1252(textBefore(header, delimiter)));
}

bool isResultListTag(std::string_view tag, bool tolerant) {
  if (tolerant) {
    const auto end = tag.find_first_of(": \t\r\n");
    if (end != nowhere && tag[end] == ':') tag.remove_prefix(end + 1);
  }
  constexpr std::string_view root = "resultlist";
  const std::string begin = lowered1252(tag.substr(0, root.size() + 1));
  const bool hasMore = begin.size() > root.size() && begin.starts_with(root) &&
                       std::string_view(" \t\r\n").find(begin.back()) != nowhere;
  const std::string_view name = trimmed(tag);
  return hasMore || (name.size() == root.size() && lowered1252(name) == root);
}

bool hasResultListTag(const std::string& path, bool tolerant) {
  ScanFile file(path);
  const int tags = tolerant ? 50 : 10;
  for (int i = 0; i < tags; ++i) {
    file.skipPast("<");
    if (isResultListTag(file.readUntil(">"), tolerant)) return true;
  }
  return false;
}

// The start of a file in UTF-16; empty for any other.
std::string utf16Head(const std::string& path) {
  const std::string head = ScanFile(path).peek(65536);
  return isUtf16(head) ? utf8FromUtf16(head) : std::string();
}

bool hasUtf16ResultListTag(const std::string& path) {
  const std::string head = utf16Head(path);
  std::string_view text(head);
  for (int i = 0; i < 50; ++i) {
    removeThrough(text, "<");
    if (isResultListTag(popField(text, ">"), true)) return true;
  }
  return false;
}

std::int32_t codeIf(bool recognised, enmImportConstants code) { return recognised ? code : 0; }

bool findsBoth(const std::string& path, std::string_view first, std::string_view second,
               int secondLimit) {
  ScanFile file(path);
  return file.find(first, headSize, headSize) && file.find(second, secondLimit, headSize);
}

bool isUtf16PekkaPirilaXml(const std::string& path) {
  const std::string head = lowered(utf16Head(path));
  std::string_view behindEvent(head);
  removeThrough(behindEvent, "<event>");
  return behindEvent.find("<eventclass>") != nowhere ||
         head.find("<event type=\"relay\">") != nowhere;
}

// "OE2002 ©" at the start of the text, in the page's encoding, UTF-8 or as a reference.
bool isCredit(std::string_view text) {
  constexpr std::array<std::string_view, 3> programs = {"OE20", "OS20", "MT20"};
  if (text.size() < 7 ||
      std::find(programs.begin(), programs.end(), text.substr(0, 4)) == programs.end()) {
    return false;
  }
  if (!isDigit(text[4]) || !isDigit(text[5])) return false;
  const auto sign = text.find_first_not_of(" \t\r\n", 6);
  if (sign == nowhere) return false;
  text.remove_prefix(sign);
  return text.starts_with("\xA9") || text.starts_with("\xC2\xA9") || text.starts_with("&copy;");
}

// Whether a list begins with the header of its format, so that no word in its rows tells what it
// is.
bool hasHeader(const std::string& path) {
  if (ScanFile(path).peek(1).starts_with('<')) return false;
  const FileProbe probe{path, true};
  return detectCsv(probe) != 0 || detectStandardText(probe) != 0;
}

std::int32_t firstDetected(const FileProbe& probe, std::optional<bool>& headed) {
  for (const Format& format : splitTimeFormats()) {
    if (format.evidence == Evidence::words) {
      if (!headed) headed = hasHeader(probe.path);
      if (*headed) continue;
    }
    if (const std::int32_t code = format.detect(probe)) return code;
  }
  return 0;
}

}  // namespace

std::int32_t detectCsv(const FileProbe& probe) {
  bool recognised = false;
  if (!probe.tolerant) {
    recognised = hasStartNumberHeader(probe.path);
  } else if (CsvHeader header; header.read(probe.path) && header.hasRows()) {
    recognised =
        isStartNumberHeader(westernReading(header.firstField())) || !header.layout().empty();
  }
  return recognised ? LRKImport::determineSportSoftwareCSVFileFormat(probe.path) : 0;
}

std::int32_t detectIofXml(const FileProbe& probe) {
  return codeIf(hasResultListTag(probe.path, probe.tolerant) ||
                    (probe.tolerant && hasUtf16ResultListTag(probe.path)),
                LRK_IMPORT_XML);
}

std::int32_t detectSportSoftwareSplits(const FileProbe& probe) {
  const std::string bytes = ScanFile(probe.path).peek(headSize);
  const std::string text = utf8FromWindows1252(bytes);
  const auto occurs = [&](std::string_view title) {
    return text.find(title) != nowhere || (probe.tolerant && bytes.find(title) != nowhere);
  };
  return codeIf(std::any_of(std::begin(splitTimeTitles), std::end(splitTimeTitles), occurs),
                LRK_IMPORT_SPORT_SOFTWARE_HTML_TEXT);
}

std::int32_t detectOla(const FileProbe& probe) {
  ScanFile file(probe.path);
  file.position(std::max<std::int64_t>(1, file.size() - headSize));
  return codeIf(file.peek(headSize + 1).find("med OLA version") != nowhere, LRK_IMPORT_OLA_HTML);
}

std::int32_t detectETiming(const FileProbe& probe) {
  return codeIf(ScanFile(probe.path).find("eTiming", headSize, headSize), LRK_IMPORT_ETIMING_HTML);
}

std::int32_t detectPekkaPirilaHtml(const FileProbe& probe) {
  return codeIf(findsBoth(probe.path, "<title>", "Tilanne rasteilla", 2 * headSize),
                LRK_IMPORT_PEKKA_PIRILA_HTML);
}

std::int32_t detectStandardText(const FileProbe& probe) {
  std::string line;
  ScanFile(probe.path).readLine(line);
  std::string_view header(line);
  if (probe.tolerant && header.starts_with("\xEF\xBB\xBF")) header.remove_prefix(3);
  return codeIf(lowered1252(trimmed(header)) == "larkstone standard text format",
                LRK_IMPORT_LARKSTONE_STANDARD_TEXT);
}

std::int32_t detectSolv(const FileProbe& probe) {
  return codeIf(ScanFile(probe.path).find("SOLV", headSize, headSize), LRK_IMPORT_SOLV_HTML);
}

std::int32_t detectPekkaPirilaXml(const FileProbe& probe) {
  const bool individual = findsBoth(probe.path, "<Event>", "<EventClass>", headSize);
  return codeIf(individual ||
                    ScanFile(probe.path).find("<event Type=\"Relay\">", headSize, headSize) ||
                    (probe.tolerant && isUtf16PekkaPirilaXml(probe.path)),
                LRK_IMPORT_PEKKA_PIRILA_XML);
}

std::int32_t detectSportSoftwareCredit(const FileProbe& probe) {
  constexpr int overlap = 32;
  ScanFile file(probe.path);
  for (;;) {
    const std::string bytes = file.peek(65536);
    const std::string_view text(bytes);
    for (auto at = text.find("20", 2); at != nowhere; at = text.find("20", at + 1)) {
      if (isCredit(text.substr(at - 2, overlap))) {
        return LRK_IMPORT_STARTLIST_SPORT_SOFTWARE_HTML_TEXT;
      }
    }
    if (bytes.size() <= overlap) return 0;
    file.position(file.position() + static_cast<std::int64_t>(bytes.size()) - overlap);
  }
}

std::int32_t detectPekkaPirilaStartlist(const FileProbe& probe) {
  return codeIf(ScanFile(probe.path).find("LUETTELO", 0, 512),
                LRK_IMPORT_STARTLIST_PEKKA_PIRILA_HTML);
}

std::int32_t LRKImport::determineFileFormat(const std::string& filename) {
  if (!fileExists(filename)) return LRK_IMPORT_FILE_DOES_NOT_EXIST;
  std::optional<bool> headed;
  for (const bool tolerant : {false, true}) {
    if (const auto code = firstDetected({filename, tolerant}, headed)) return code;
  }
  return LRK_IMPORT_UNKNOWN;
}

std::int32_t LRKImport::determineStartlistFileFormat(const std::string& filename) {
  if (!fileExists(filename)) return LRK_IMPORT_FILE_DOES_NOT_EXIST;
  const FileProbe probe{filename};
  for (const Format& format : startlistFormats()) {
    if (format.detect(probe) != 0) return format.code;
  }
  return LRK_IMPORT_STARTLIST_UNKNOWN;
}

std::int32_t LRKImport::determineLRKFileFormat(const std::string& lrkFileName) {
  if (!fileExists(lrkFileName)) return LRK_IMPORT_FILE_DOES_NOT_EXIST;
  constexpr std::string_view previousGeneration = "\x0DLarkstone 3.0";
  const std::string head = ScanFile(lrkFileName).peek(previousGeneration.size());
  if (head.starts_with("lrk4")) return LRK_IMPORT_LRK_LRK4;
  return head == previousGeneration ? LRK_IMPORT_LRK_LRK3 : LRK_IMPORT_LRK_UNKNOWN;
}

std::int32_t LRKImport::determineSportSoftwareCSVFileFormat(const std::string& csvFileName) {
  if (!fileExists(csvFileName)) return LRK_IMPORT_FILE_DOES_NOT_EXIST;
  CsvHeader header;
  if (!header.read(csvFileName)) return LRK_IMPORT_CSV_UNKNOWN;
  if (header.isOfRelay()) return LRK_IMPORT_CSV_OS200X;
  if (header.has("Long")) return LRK_IMPORT_CSV_OE200X;
  if (header.has("Read at")) return LRK_IMPORT_CSV_SIMAN;
  return LRK_IMPORT_CSV_UNKNOWN;
}

}  // namespace larkstone
