// IOF XML result lists of any version: preparing the text, choosing the reader, closing the import.

#include "larkstone/core/text.hpp"
#include "larkstone/event/event.hpp"
#include "larkstone/import/readers.hpp"
#include "larkstone/import/readers/iof_list.hpp"
#include "larkstone/import/xml_preparation.hpp"

namespace larkstone {

namespace {

// "iofVersion" of the root since version 3, an element of its own before; in any letter case.
std::string versionOf(XmlNode list) {
  constexpr std::string_view word = "iofVersion";
  std::string_view version = list.attribute(word);
  for (XmlNode child = list.firstChild(); child && version.empty(); child = child.next()) {
    if (equalNoCase(child.name(), word)) version = child.attribute("version");
  }
  return std::string(version);
}

int noOfNameless(const LRKEvent& event) {
  int count = 0;
  for (int i = 0; i < event.noOfCategories(); ++i) count += event.categoryName(i).empty() ? 1 : 0;
  return count;
}

}  // namespace

std::int32_t readIofXml(ReadJob& job) {
  XmlDocument document;
  if (!loadXml(job.fileName, document)) return LRK_IMPORT_IOF_XML_INVALID_FORMAT;
  const XmlNode list = document.root();
  if (!list.is("ResultList")) return LRK_IMPORT_IOF_XML_INVALID_FORMAT;
  const std::string number = versionOf(list);
  if (number.empty()) return LRK_IMPORT_IOF_XML_INVALID_FORMAT;
  const bool second = number.front() == '1' || number.front() == '2';
  const IofVersion& version = second ? iofVersion2 : iofVersion3;

  const int before = job.event.noOfCategories();
  const int namelessBefore = noOfNameless(job.event);
  const std::string importedFrom = version.importedFrom(list, number);
  job.event.importedFrom(importedFrom);
  version.readEvent(list, job.event);
  ReaderRun run(job, version.courseLength);
  readIofClasses(version, list, job, run);
  if (const std::int32_t code = run.end(importedFrom)) return code;
  if (!second) return 0;
  // A relay counts as the one class it is in the list, whatever it was taken apart into.
  const int nameless = namelessBefore + run.noOfNameless();
  return 2 * nameless > before + run.noOfAdded() ? LRK_IMPORT_IOF_XML_BLANK_NAMES : 0;
}

}  // namespace larkstone
