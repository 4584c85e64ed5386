#include "larkstone/platform/xml.hpp"

#include <unordered_map>
#include <utility>
#include <vector>

#include <pugixml.hpp>

#include "larkstone/core/text.hpp"

namespace larkstone {

namespace {

constexpr std::string_view prefixDeclaration = "xmlns:";

pugi::xml_node nodeOf(void* node) {
  return pugi::xml_node(static_cast<pugi::xml_node_struct*>(node));
}

bool isElement(pugi::xml_node node) { return node.type() == pugi::node_element; }

bool isText(pugi::xml_node node) {
  return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

pugi::xml_node elementFrom(pugi::xml_node node) {
  while (node && !isElement(node)) node = node.next_sibling();
  return node;
}

pugi::xml_attribute findAttribute(pugi::xml_node node, std::string_view name) {
  for (auto attribute = node.first_attribute(); attribute; attribute = attribute.next_attribute()) {
    if (attribute.name() == name) return attribute;
  }
  for (auto attribute = node.first_attribute(); attribute; attribute = attribute.next_attribute()) {
    if (equalNoCase(attribute.name(), name)) return attribute;
  }
  return {};
}

// Calls enter(element, depth) for every element in document order and leave(depth) behind it,
// without recursion: a file decides how deep its elements stand. Stops when enter() says false.
template <class Enter, class Leave>
bool walk(pugi::xml_node root, Enter enter, Leave leave) {
  int depth = 1;
  for (pugi::xml_node node = root; node;) {
    if (!enter(node, depth)) return false;
    if (const pugi::xml_node child = elementFrom(node.first_child())) {
      node = child;
      ++depth;
      continue;
    }
    leave(depth);
    while (node != root) {
      if (const pugi::xml_node next = elementFrom(node.next_sibling())) {
        node = next;
        break;
      }
      node = node.parent();
      --depth;
      leave(depth);
    }
    if (node == root) break;
  }
  return true;
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

// Takes the prefixes of the root's namespace off the element names. Bindings count within the
// element that declares them.
class PrefixRemover {
 public:
  explicit PrefixRemover(pugi::xml_node root) : space_(root) { bindings_["xml"] = {false}; }

  bool enter(pugi::xml_node node, int depth) {
    for (const pugi::xml_attribute attribute : node.attributes()) {
      const std::string_view name = attribute.name();
      if (!name.starts_with(prefixDeclaration)) continue;
      const std::string_view prefix = name.substr(prefixDeclaration.size());
      bindings_[prefix].push_back(space_.bindsPrefix(attribute));
      declared_.push_back({depth, prefix});
    }
    const std::string_view name = node.name();
    const auto colon = name.find(':');
    if (colon == std::string_view::npos || !isOwn(name.substr(0, colon))) return true;
    node.set_name(std::string(name.substr(colon + 1)).c_str());
    return true;
  }
  void leave(int depth) {
    while (!declared_.empty() && declared_.back().depth == depth) {
      bindings_[declared_.back().prefix].pop_back();
      declared_.pop_back();
    }
  }

 private:
  struct Declared {
    int depth;
    std::string_view prefix;
  };

  // A root with a prefix that nothing declares is taken for its own namespace.
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
  const RootNamespace space(root);
  bool prefixes = space.prefixed;
  const bool shallow = walk(
      root,
      [&](pugi::xml_node node, int depth) {
        for (const pugi::xml_attribute attribute : node.attributes()) {
          prefixes = prefixes || space.bindsPrefix(attribute);
        }
        return depth <= XmlDocument::deepest;
      },
      [](int) {});
  if (!shallow) return false;
  if (prefixes) {
    PrefixRemover remover(root);
    walk(
        root, [&](pugi::xml_node node, int depth) { return remover.enter(node, depth); },
        [&](int depth) { remover.leave(depth); });
  }
  return true;
}

}  // namespace

std::string_view XmlNode::name() const { return nodeOf(node_).name(); }

XmlNode XmlNode::firstChild() const {
  return XmlNode(elementFrom(nodeOf(node_).first_child()).internal_object());
}

XmlNode XmlNode::next() const {
  return XmlNode(elementFrom(nodeOf(node_).next_sibling()).internal_object());
}

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
  if (!child) return trimmed(first);
  pieces = first;
  for (pugi::xml_node piece = child; piece; piece = piece.next_sibling()) {
    if (isText(piece)) pieces += piece.value();
  }
  return trimmed(pieces);
}

std::string_view XmlNode::attribute(std::string_view name) const {
  return trimmed(findAttribute(nodeOf(node_), name).value());
}

bool XmlNode::hasAttribute(std::string_view name) const {
  return !findAttribute(nodeOf(node_), name).empty();
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
  return content_ ? XmlNode(content_->document.document_element().internal_object()) : XmlNode();
}

}  // namespace larkstone
