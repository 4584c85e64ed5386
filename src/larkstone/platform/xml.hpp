#pragma once

// XML documents: read whole, walked by the names of elements.

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace larkstone {

/// An element of a document, or none. An absent element answers every question with an empty text
/// or another absent element, so a reader needs no ladder of checks. Valid as long as its document.
class XmlNode {
 public:
  XmlNode() = default;
  explicit operator bool() const { return node_ != nullptr; }
  friend bool operator==(XmlNode a, XmlNode b) { return a.node_ == b.node_; }

  /// The local name: without a prefix of the document's own namespace.
  std::string_view name() const { return name_; }
  /// Whether that is its name; quicker than a comparison with name().
  bool is(std::string_view name) const {
    const char* own = name_;
    for (const char c : name) {
      if (*own++ != c) return false;
    }
    return *own == '\0';
  }

  /// The first child element, and the next element under the same parent.
  XmlNode firstChild() const;
  XmlNode next() const;
  /// The first child with the name, and the next sibling with the name.
  XmlNode child(std::string_view name) const;
  XmlNode next(std::string_view name) const;
  /// The first node that a path of child names leads to: "Person/Name/Family".
  XmlNode at(std::string_view path) const;

  /// The text directly inside the element, whole (comments and character-data sections in between
  /// do not cut it) and without blanks around it.
  std::string text() const;
  /// The same without a copy where the text stands in one piece; `pieces` holds it otherwise.
  std::string_view text(std::string& pieces) const;
  /// The text at the end of a path.
  std::string textAt(std::string_view path) const { return at(path).text(); }

  /// The attribute with exactly that name, else one that differs in letter case only; without
  /// blanks around it. Empty when there is none.
  std::string_view attribute(std::string_view name) const;
  bool hasAttribute(std::string_view name) const;

  /// The child elements with one name, for a range-based loop.
  class Children;
  Children children(std::string_view name) const;

 private:
  friend class XmlDocument;
  XmlNode(void* node, const char* name) : node_(node), name_(name) {}
  static XmlNode elementFrom(void* node);

  void* node_ = nullptr;
  const char* name_ = "";
};

class XmlNode::Children {
 public:
  Children(XmlNode parent, std::string_view name) : first_(parent.child(name)), name_(name) {}

  class Iterator {
   public:
    Iterator(XmlNode node, std::string_view name) : node_(node), name_(name) {}
    XmlNode operator*() const { return node_; }
    Iterator& operator++() {
      node_ = node_.next(name_);
      return *this;
    }
    friend bool operator!=(const Iterator& a, const Iterator& b) { return !(a.node_ == b.node_); }

   private:
    XmlNode node_;
    std::string_view name_;
  };
  Iterator begin() const { return {first_, name_}; }
  Iterator end() const { return {{}, name_}; }

 private:
  XmlNode first_;
  std::string_view name_;
};

inline XmlNode::Children XmlNode::children(std::string_view name) const { return {*this, name}; }

/// A document in memory. The text is parsed where it stands and kept, so names and texts of its
/// nodes cost no copy.
class XmlDocument {
 public:
  /// Elements nested deeper than this are refused.
  static constexpr int deepest = 256;

  XmlDocument();
  ~XmlDocument();
  XmlDocument(XmlDocument&&) noexcept;
  XmlDocument& operator=(XmlDocument&&) noexcept;

  /// Parses UTF-8 text; entities other than those of XML itself stay as written. False for a text
  /// that is broken or nested too deeply; the document is empty then.
  bool parse(std::string text);
  /// The outermost element; none for an empty document.
  XmlNode root() const;

 private:
  struct Content;
  std::unique_ptr<Content> content_;
};

}  // namespace larkstone
