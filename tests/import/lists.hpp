#pragma once

// Short forms for lists in XML.

#include <string>
#include <string_view>

namespace larkstone::test {

/// element("Name type='x'", "A"): the name may bring attributes along.
inline std::string element(std::string_view name, std::string_view content) {
  std::string text = "<" + std::string(name) + ">" + std::string(content);
  return text + "</" + std::string(name.substr(0, name.find(' '))) + ">";
}

inline std::string split(std::string_view code, std::string_view time) {
  return element("SplitTime", element("ControlCode", code) + element("Time", time));
}

/// A list of version 2, and a class, a person and a time of day in it.
inline std::string list2(std::string_view content) {
  return element("ResultList", "<IOFVersion version='2.0.3'/>" + std::string(content));
}
inline std::string class2(std::string_view persons, std::string_view name = "H21") {
  return element("ClassResult", element("ClassShortName", name) + std::string(persons));
}
inline std::string person2(std::string_view result, std::string_view name = "Eva") {
  return element("PersonResult", element("Person", element("PersonName", element("Given", name))) +
                                     element("Result", result));
}
inline std::string clock2(std::string_view name, std::string_view time) {
  return element(name, element("Clock", time));
}

/// A list of version 3, and a class and a person in it.
inline std::string list3(std::string_view content) {
  return element("ResultList iofVersion='3.0' creator='C'", content);
}
inline std::string class3(std::string_view persons, std::string_view name = "H21") {
  return element("ClassResult", element("Class", element("Name", name)) + std::string(persons));
}
inline std::string person3(std::string_view results, std::string_view name = "Eva") {
  const std::string person = element("Person", element("Name", element("Given", name)));
  return element("PersonResult", person + std::string(results));
}

}  // namespace larkstone::test
