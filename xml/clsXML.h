#pragma once

#include "platform/XmlDom.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tarv {

struct Runtime;
enum class XmlSource;

/// One XML document, read and changed by node address. A path is evaluated against the document element with
/// the component's single-node selection; XPath under parser version 6, the older pattern language under
/// version 1, whose indices count from 0.
///
/// A document is there after a successful OpenFromFile or OpenFromString. Members "for a missing node" also
/// mean: without a document, or when the component refuses the path. The others raise RuntimeError with the
/// component's error record, or with number 91 where there is no document or no node to work on.
///
/// Names that XML does not allow, and texts with characters that no XML file can hold (those below 32 except
/// tab, LF and CR, among others), are refused: the saved file could never be loaded again.
class clsXML {
public:
    explicit clsXML(Runtime& rt) : rt_(rt) {}

    /// Text of the node, every LF replaced by CR LF; empty for a missing node.
    std::wstring ReadNode(std::wstring_view path);
    /// Null for a missing node. The node keeps its document alive.
    XmlNodeRef GetNode(std::wstring_view path);
    /// XML text of the node; empty when nothing matches. Raises without a document and for a bad path.
    std::wstring ReadNodeXML(std::wstring_view path);
    /// XML text of the document, its declaration completed by encoding="UTF-8". Raises without a document.
    std::wstring XML();

    /// The attribute's value, Null when the node has none of that name, Empty for a missing node.
    Value ReadAttribute(std::wstring_view path, std::wstring_view name);
    /// True when set; false for a missing node and for what XML cannot hold.
    bool WriteAttribute(std::wstring_view path, std::wstring_view name, const Value& value);

    /// Number of nodes that the path selects; 0 for a missing node.
    std::int32_t NodeCount(std::wstring_view path);

    /// Saves the document. Raises without a document, when its encoding is known neither here nor to the
    /// component, and when the file cannot be written, after half a second where somebody has it open. The
    /// file that was there survives every failure: the new one is written beside it and takes its place when
    /// it is complete. Where the system loses the old file, the error names the new one.
    void Save(std::wstring_view file);

    /// Removes the node from its parent; does nothing for a missing node.
    void DeleteNode(std::wstring_view path);

    /// Appends a new element to the node at `path`, then writes the attributes that are given with name and
    /// value, neither empty, by path + "/" + name: they go to the first child of that name, so an older one
    /// gets them when there is one. An attribute that is refused is left out. Raises 91 for a missing node, 5
    /// for the document itself and for an element's name or text that XML does not allow.
    void MakeNode(std::wstring_view path, std::wstring_view name,
                  std::optional<std::wstring_view> text = std::nullopt,
                  std::optional<std::wstring_view> name1 = std::nullopt, const Value& value1 = Missing{},
                  std::optional<std::wstring_view> name2 = std::nullopt, const Value& value2 = Missing{});

    /// Removes an attribute, also one that is not there. Raises 91 for a missing node.
    void DeleteAttribute(std::wstring_view path, std::wstring_view name);

    /// Colour value (red + 256 × green + 65536 × blue) of a text like "(255, 128, 0)". Raises 91 for a
    /// missing node, 9 when the text does not have three parts, 6 when the sum exceeds 32 bits.
    std::int32_t GetColorValue(std::wstring_view path);
    /// Writes the colour text; false for a missing node.
    bool SetColorValue(std::wstring_view path, std::int16_t red, std::int16_t green, std::int16_t blue);

    /// Chooses parser version 6 or 1 for the loads to come; answers it, or 0 when no document of that version
    /// can be created. Without this call the first load takes the newest that can be created.
    std::int16_t Initialize(std::int16_t version);

    /// Loads a file in place of the present document; false, and no document, when that fails. With
    /// `showErrors` the user sees the parser's message.
    bool OpenFromFile(std::wstring_view file, bool showErrors);

    /// Sets the text of an existing node; false for a missing node and for what XML cannot hold.
    bool WriteNode(std::wstring_view path, std::wstring_view value);

    /// Appends a new element to the parent of the node at `path` (mode 0) or to that node itself (mode 1).
    /// The attribute is set when name and value are given and not empty. True when inserted; otherwise
    /// nothing has changed.
    bool InsertNode(std::wstring_view path, std::wstring_view name, std::int16_t mode,
                    std::optional<std::wstring_view> text = std::nullopt,
                    std::optional<std::wstring_view> attributeName = std::nullopt,
                    const Value& attributeValue = Missing{});

    /// As OpenFromFile, from a text.
    bool OpenFromString(std::wstring_view xml, bool showErrors);

private:
    bool open(XmlSource kind, std::wstring_view source, bool showErrors);
    XmlDocument& document();
    Automated<XmlNodeRef> select(std::wstring_view path);
    XmlNodeRef existing(std::wstring_view path);

    Runtime& rt_;
    XmlDocumentRef document_;
    std::optional<std::int16_t> version_;
};

} // namespace tarv
