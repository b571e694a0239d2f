#include "documents/cell_text.h"

#include <unordered_map>
#include <vector>

#include "documents/word_markup.h"

namespace tarnwick::documents {

namespace {

// Characters in a cell: a page of dense print has about 5,000.
constexpr qsizetype kLongestText = 1 << 16;

// What an element means for the text. An element that is not listed is a wrapper around text: a
// link, an insertion, a content control, a smart tag and so on.
enum class Meaning {
    kWrapper,
    kNothing,
    kParagraph,
    kRun,
    kText,
    kTab,
    kBreak,
    kLineBreak,
    kNoBreakHyphen,
    kSoftHyphen,
    kSymbol,
    kFieldMark,
    kAlternatives
};

Meaning meaningOf(std::string_view name) {
    using enum Meaning;
    static const std::unordered_map<std::string_view, Meaning> meanings{
        {"p", kParagraph},
        {"r", kRun},
        {"t", kText},
        {"tab", kTab},
        {"ptab", kTab},
        {"br", kBreak},
        {"cr", kLineBreak},
        {"noBreakHyphen", kNoBreakHyphen},
        {"softHyphen", kSoftHyphen},
        {"sym", kSymbol},
        {"fldChar", kFieldMark},
        {"AlternateContent", kAlternatives},
        {"pPr", kNothing},  // holds tabs of another kind
        {"rPr", kNothing},
        {"sdtPr", kNothing},
        {"del", kNothing},
        {"moveFrom", kNothing},
        {"drawing", kNothing},
        {"pict", kNothing},
        {"object", kNothing},
        {"rt", kNothing}};  // pronunciation of the text below it
    const auto found = meanings.find(name);
    return found == meanings.end() ? kWrapper : found->second;
}

bool isOn(const pugi::xml_node& property) {
    if (!property) return false;
    const std::string_view value = attributeNamed(property, "val").as_string("1");
    return value != "0" && value != "false" && value != "off";
}

bool isHidden(const pugi::xml_node& run) {
    return isOn(childNamed(childNamed(run, "rPr"), "vanish"));
}

// False if the end mark is struck out: the paragraph then continues in the next one.
bool endsHere(const pugi::xml_node& paragraph) {
    const pugi::xml_node mark = childNamed(childNamed(paragraph, "pPr"), "rPr");
    return !childNamed(mark, "del") && !childNamed(mark, "moveFrom");
}

// Line ends in the XML count as blanks. Blanks at both ends are dropped unless they are preserved
// explicitly.
QString plainText(const pugi::xml_node& node) {
    QString text = QString::fromUtf8(textIn(node));
    for (QChar& character : text)
        if (character < u' ' && character != u'\t') character = u' ';
    const std::string_view space = attributeNamed(node, "space").value();
    if (space == "preserve") return text;
    const auto isBlank = [&](qsizetype at) { return text[at] == u' ' || text[at] == u'\t'; };
    qsizetype begin = 0, end = text.size();
    while (begin < end && isBlank(begin))
        ++begin;
    while (end > begin && isBlank(end - 1))
        --end;
    return text.sliced(begin, end - begin);
}

class Walk {
  public:
    void through(const pugi::xml_node& parent, int depth);

    QString text;

  private:
    void meet(const pugi::xml_node& node, int depth);
    void fieldMark(const pugi::xml_node& node);
    void put(const QString& piece) {
        if (!hidden_ && instructions_ == 0) append(piece);
    }
    void append(const QString& piece) {
        if (text.size() + piece.size() > kLongestText) throw PackageError(PackageError::kTooLarge);
        text += piece;
    }

    bool parted_ = false;       // a paragraph has ended: the next one begins with a CR
    bool hidden_ = false;       // in a hidden run
    std::vector<bool> fields_;  // open fields, inmost last; true: still in the instruction
    int instructions_ = 0;      // number of open fields still in the instruction
};

void Walk::through(const pugi::xml_node& parent, int depth) {
    checkDepth(depth);
    for (const pugi::xml_node& node : parent.children())
        if (node.type() == pugi::node_element) meet(node, depth);
}

void Walk::meet(const pugi::xml_node& node, int depth) {
    switch (meaningOf(localName(node))) {
        case Meaning::kNothing:
            return;
        case Meaning::kWrapper:
            return through(node, depth + 1);
        case Meaning::kAlternatives:
            return through(chosenBranch(node), depth + 1);
        case Meaning::kParagraph:
            if (std::exchange(parted_, false)) append(QStringLiteral("\r"));
            through(node, depth + 1);
            parted_ = endsHere(node);
            return;
        case Meaning::kRun: {
            const bool before = std::exchange(hidden_, hidden_ || isHidden(node));
            through(node, depth + 1);
            hidden_ = before;
            return;
        }
        case Meaning::kText:
            return put(plainText(node));
        case Meaning::kTab:
            return put(QStringLiteral("\t"));
        case Meaning::kBreak: {
            const std::string_view type = attributeNamed(node, "type").value();
            return put(type == "page" ? QStringLiteral("\f") : QStringLiteral("\v"));
        }
        case Meaning::kLineBreak:
            return put(QStringLiteral("\v"));
        case Meaning::kNoBreakHyphen:
            return put(QChar(u'\u2011'));
        case Meaning::kSoftHyphen:
            return put(QChar(QChar::SoftHyphen));
        case Meaning::kSymbol: {
            const QByteArray code = attributeNamed(node, "char").value();
            const QChar symbol(code.toUShort(nullptr, 16));
            if (symbol.isNull() || symbol.isSurrogate()) return;  // no character at all
            return put(symbol);
        }
        case Meaning::kFieldMark:
            return fieldMark(node);
    }
}

// begin, instruction, separate, result, end; the result may be missing, and fields can be nested.
void Walk::fieldMark(const pugi::xml_node& node) {
    const std::string_view type = attributeNamed(node, "fldCharType").value();
    if (type == "begin") {
        fields_.push_back(true);
        ++instructions_;
    } else if (!fields_.empty()) {
        if (fields_.back()) --instructions_;
        fields_.back() = false;
        if (type == "end") fields_.pop_back();
    }
}

}  // namespace

QString cellText(const pugi::xml_node& cell) {
    Walk walk;
    walk.through(cell, 0);
    return walk.text;
}

}  // namespace tarnwick::documents
