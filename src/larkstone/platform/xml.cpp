#include "larkstone/platform/xml.hpp"

#include <bit>
#include <unordered_map>
#include <utility>
#include <vector>

#include <pugixml.hpp>

#include "larkstone/core/text.hpp"

namespace larkstone {

namespace {

constexpr std::string_view prefixDeclaration = "xmlns:";

// A node of the library is one pointer. Casting it costs nothing, where its own conversions are
// calls that a large document feels.
static_assert(sizeof(pugi::xml_node) == sizeof(void*));
static_assert(sizeof(pugi::xml_attribute) == sizeof(void*));
pugi::xml_node nodeOf(void* node) { return std::bit_cast<pugi::xml_node>(node); }
void* handleOf(pugi::xml_node node) { return std::bit_cast<void*>(node); }
bool exists(pugi::xml_node node) { return handleOf(node) != nullptr; }
bool exists(pugi::xml_attribute attribute) { return std::bit_cast<void*>(attribute) != nullptr; }

bool isText(pugi::xml_node node) {
  return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

std::string_view trimmedText(std::string_view text) {
  const bool clean = !text.empty() && text.front() > ' ' && text.back() > ' ';
  return clean ? text : trimmed(text);
}

// The attribute with the name, else one that differs in case only; null without any.
pugi::xml_attribute findAttribute(pugi::xml_node node, std::string_view name) {
  pugi::xml_attribute similar;
  for (auto attribute = node.first_attribute(); exists(attribute);
       attribute = attribute.next_attribute()) {
    if (attribute.name() == name) return attribute;
    if (!exists(similar) && equalNoCase(attribute.name(), name)) similar = attribute;
  }
  return similar;
}

// The namespace of the root element: the one its prefix is bound to, or the default one.
struct RootNamespace {
  explicit RootNamespace(pugi::xml_node root) {
    const std::string_view name = root.name();
    const auto colon = name.find(':');
    prefixed = colon != std::string_view::npos;
    const std::string declaration =
        prefixed ? std::string(prefixDeclaration).append(name.substr(0, colon)) : "xmlns";
    uri = root.attribute(declaration.c_str()).value();
  }
  bool bindsPrefix(pugi::xml_attribute attribute) const {
    return std::string_view(attribute.name()).starts_with(prefixDeclaration) && !uri.empty() &&
           attribute.value() == uri;
  }

  bool prefixed = false;
  std::string_view uri;
};

// Measures the depth, and finds prefixes that are bound to the namespace of the root. The library
// walks without recursion: a file decides how deep its elements stand.
class Surveyor : public pugi::xml_tree_walker {
 public:
  explicit Surveyor(pugi::xml_node root) : space_(root), prefixes_(space_.prefixed) {}

  bool begin(pugi::xml_node& root) override { return visit(root); }
  bool for_each(pugi::xml_node& node) override { return visit(node); }
  bool prefixes() const { return prefixes_; }

 private:
  bool visit(pugi::xml_node node) {
    for (auto attribute = node.first_attribute(); exists(attribute) && !prefixes_;
         attribute = attribute.next_attribute()) {
      prefixes_ = space_.bindsPrefix(attribute);
    }
    return depth() + 2 <= XmlDocument::deepest;  // children of the root stand at 0
  }

  RootNamespace space_;
  bool prefixes_;
};

// Takes the prefixes of the root's namespace off the element names. A binding counts within the
// element that declares it.
class PrefixRemover : public pugi::xml_tree_walker {
 public:
  explicit PrefixRemover(pugi::xml_node root) : space_(root) {}

  bool begin(pugi::xml_node& root) override { return visit(root); }
  bool for_each(pugi::xml_node& node) override { return visit(node); }

 private:
  struct Declared {
    int depth;
    std::string_view prefix;
  };

  bool visit(pugi::xml_node node) {
    while (!declared_.empty() && declared_.back().depth >= depth()) {
      bindings_[declared_.back().prefix].pop_back();
      declared_.pop_back();
    }
    for (auto attribute = node.first_attribute(); exists(attribute);
         attribute = attribute.next_attribute()) {
      const std::string_view name = attribute.name();
      if (!name.starts_with(prefixDeclaration)) continue;
      const std::string_view prefix = name.substr(prefixDeclaration.size());
      bindings_[prefix].push_back(space_.bindsPrefix(attribute));
      declared_.push_back({depth(), prefix});
    }
    const std::string_view name = node.name();
    const auto colon = name.find(':');
    if (colon != std::string_view::npos && isOwn(name.substr(0, colon))) {
      node.set_name(std::string(name.substr(colon + 1)).c_str());
    }
    return true;
  }

  // With a root whose prefix nothing declares, undeclared prefixes are taken for its own.
  bool isOwn(std::string_view prefix) const {
    const auto found = bindings_.find(prefix);
    if (found == bindings_.end() || found->second.empty()) return space_.prefixed;
    return found->second.back();
  }

  RootNamespace space_;
  std::unordered_map<std::string_view, std::vector<bool>> bindings_;
  std::vector<Declared> declared_;
};

// Checks the depth, and brings element names to their local form where prefixes are in use.
bool normalise(pugi::xml_node root) {
  Surveyor surveyor(root);
  if (!root.traverse(surveyor)) return false;
  PrefixRemover remover(root);
  return !surveyor.prefixes() || root.traverse(remover);
}

}  // namespace

XmlNode XmlNode::elementFrom(void* node) {
  for (pugi::xml_node next = nodeOf(node); exists(next); next = next.next_sibling()) {
    const char* const name = next.name();
    if (*name != '\0') return {handleOf(next), name};
  }
  return {};
}

XmlNode XmlNode::firstChild() const { return elementFrom(handleOf(nodeOf(node_).first_child())); }
XmlNode XmlNode::next() const { return elementFrom(handleOf(nodeOf(node_).next_sibling())); }

XmlNode XmlNode::child(std::string_view name) const {
  XmlNode node = firstChild();
  return !node || node.is(name) ? node : node.next(name);
}

XmlNode XmlNode::next(std::string_view name) const {
  XmlNode node = next();
  while (node && !node.is(name)) node = node.next();
  return node;
}

XmlNode XmlNode::at(std::string_view path) const {
  XmlNode node = *this;
  while (node) {
    const auto slash = path.find('/');
    node = node.child(path.substr(0, slash));
    if (slash == std::string_view::npos) return node;
    path.remove_prefix(slash + 1);
  }
  return node;
}

std::string XmlNode::text() const {
  std::string pieces;
  return std::string(text(pieces));
}

std::string_view XmlNode::text(std::string& pieces) const {
  const pugi::xml_node node = nodeOf(node_);
  const std::string_view first = node.value();
  const pugi::xml_node child = node.first_child();
  if (!exists(child)) return trimmedText(first);
  pieces = first;
  for (pugi::xml_node piece = child; exists(piece); piece = piece.next_sibling()) {
    if (isText(piece)) pieces += piece.value();
  }
  return trimmedText(pieces);
}

std::string_view XmlNode::attribute(std::string_view name) const {
  const pugi::xml_attribute attribute = findAttribute(nodeOf(node_), name);
  return exists(attribute) ? trimmedText(attribute.value()) : std::string_view();
}

bool XmlNode::hasAttribute(std::string_view name) const {
  return exists(findAttribute(nodeOf(node_), name));
}

struct XmlDocument::Content {
  std::string text;
  pugi::xml_document document;
};

XmlDocument::XmlDocument() = default;
XmlDocument::~XmlDocument() = default;
XmlDocument::XmlDocument(XmlDocument&&) noexcept = default;
XmlDocument& XmlDocument::operator=(XmlDocument&&) noexcept = default;

bool XmlDocument::parse(std::string text) {
  content_ = std::make_unique<Content>();
  content_->text = std::move(text);
  // The first text of an element is kept in the element itself: half as many nodes.
  const auto result = content_->document.load_buffer_inplace(
      content_->text.data(), content_->text.size(), pugi::parse_default | pugi::parse_embed_pcdata,
      pugi::encoding_utf8);
  const bool readable = result && normalise(content_->document.document_element());
  if (!readable) content_.reset();
  return readable;
}

XmlNode XmlDocument::root() const {
  if (!content_) return {};
  return XmlNode::elementFrom(handleOf(content_->document.document_element()));
}

}  // namespace larkstone
