#pragma once

// XML documents written line by line, well-formed whatever the texts hold.

#include <cstddef>
#include <string>
#include <string_view>

#include "larkstone/event/export_file.hpp"

namespace larkstone {

/// A start tag with its attributes: XmlTag("Id").with("type", issuer).
class XmlTag {
 public:
  explicit XmlTag(std::string_view name) : name_(name) {}

  XmlTag& with(std::string_view attribute, std::string_view value);

  std::string start() const { return "<" + name_ + attributes_ + ">"; }
  std::string empty() const { return "<" + name_ + attributes_ + " />"; }
  /// The whole element with its content escaped.
  std::string element(std::string_view content) const;

 private:
  std::string name_;
  std::string attributes_;
};

struct XmlForm {
  bool codePage = false;  ///< bytes of the code page instead of UTF-8
  std::string_view lineEnd = "\n";
  std::size_t indentation = 0;  ///< blanks per level
};

/// The lines of a document. The caller keeps open() and close() in balance.
class XmlLines {
 public:
  XmlLines(ExportFile& file, const XmlForm& form) : file_(file), form_(form) {}

  /// Markup as it stands.
  void line(std::string_view markup);
  void open(const XmlTag& tag);
  void open(std::string_view name) { open(XmlTag(name)); }
  void close(std::string_view name);
  void empty(const XmlTag& tag) { line(tag.empty()); }
  void empty(std::string_view name) { empty(XmlTag(name)); }
  void element(const XmlTag& tag, std::string_view content) { line(tag.element(content)); }
  void element(std::string_view name, std::string_view content) { element(XmlTag(name), content); }

 private:
  ExportFile& file_;
  XmlForm form_;
  std::size_t depth_ = 0;
};

}  // namespace larkstone
