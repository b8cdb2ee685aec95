// What a description's schema cannot see: pointers to nodes the description does not have, and formulas
// with unbalanced parentheses or names that are neither variables of their node nor GenICam's.
#include <GenApiEngine/DescriptionSchema.h>
#include <Base/GCException.h>
#include <cctype>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <memory>
#include <set>

namespace GenApiEngine {
namespace {

const std::set<std::string> formulaFunctions = {"SGN",   "NEG",  "ABS",  "SQRT", "TRUNC", "FLOOR", "CEIL",
                                                "ROUND", "ASIN", "ACOS", "SIN",  "COS",   "TAN",   "ATAN",
                                                "EXP",   "LN",   "LG",   "PI",   "E"};

std::string textOf(xmlNode* element) {
    xmlChar* content = xmlNodeGetContent(element);
    std::string text = content ? reinterpret_cast<const char*>(content) : "";
    xmlFree(content);
    const size_t first = text.find_first_not_of(" \t\r\n");
    const size_t last = text.find_last_not_of(" \t\r\n");
    return first == std::string::npos ? std::string() : text.substr(first, last - first + 1);
}

std::string attributeOf(xmlNode* element, const char* name) {
    xmlChar* value = xmlGetProp(element, reinterpret_cast<const xmlChar*>(name));
    std::string text = value ? reinterpret_cast<const char*>(value) : "";
    xmlFree(value);
    return text;
}

std::string nameOf(xmlNode* element) {
    return reinterpret_cast<const char*>(element->name);
}

bool isPointer(const std::string& element) {
    return element.size() > 1 && element[0] == 'p' && std::isupper(static_cast<unsigned char>(element[1]));
}

bool isFormula(const std::string& element) {
    return element == "Formula" || element == "FormulaTo" || element == "FormulaFrom";
}

void collectNames(xmlNode* element, std::set<std::string>& names) {
    for (xmlNode* node = element; node; node = node->next) {
        if (node->type != XML_ELEMENT_NODE)
            continue;
        const std::string name = attributeOf(node, "Name");
        if (!name.empty())
            names.insert(name);
        collectNames(node->children, names);
    }
}

// The names a formula of this node may use: its variables, constants and expressions, and the value a
// converter's formula converts.
std::set<std::string> namesOfNode(xmlNode* node, const std::string& formula) {
    std::set<std::string> names;
    for (xmlNode* child = node->children; child; child = child->next) {
        if (child->type != XML_ELEMENT_NODE)
            continue;
        const std::string element = nameOf(child);
        if (element == "pVariable" || element == "Constant" || element == "Expression")
            names.insert(attributeOf(child, "Name"));
    }
    names.insert(formula == "FormulaTo" ? "FROM" : "TO");
    return names;
}

// The end of a number starting at i: hexadecimal, or decimal with a fraction and an exponent.
size_t numberEnd(const std::string& text, size_t i) {
    auto digit = [&](size_t at) {
        return at < text.size() && std::isdigit(static_cast<unsigned char>(text[at]));
    };
    if (text.compare(i, 2, "0x") == 0 || text.compare(i, 2, "0X") == 0) {
        i += 2;
        while (i < text.size() && std::isxdigit(static_cast<unsigned char>(text[i])))
            ++i;
        return i;
    }
    while (digit(i) || (i < text.size() && text[i] == '.'))
        ++i;
    if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
        const size_t sign = i + 1 < text.size() && (text[i + 1] == '+' || text[i + 1] == '-') ? 1 : 0;
        if (digit(i + 1 + sign)) {
            i += 1 + sign;
            while (digit(i))
                ++i;
        }
    }
    return i;
}

// Unbalanced parentheses, or the first name that is no variable of the node and no GenICam function.
std::string formulaProblem(const std::string& formula, const std::set<std::string>& known) {
    int depth = 0;
    for (size_t i = 0; i < formula.size();) {
        const unsigned char c = static_cast<unsigned char>(formula[i]);
        if (std::isdigit(c)) {
            i = numberEnd(formula, i);
        } else if (std::isalpha(c) || c == '_') {
            const size_t start = i;
            while (i < formula.size() && (std::isalnum(static_cast<unsigned char>(formula[i])) ||
                                          formula[i] == '_' || formula[i] == '.'))
                ++i;
            const std::string name = formula.substr(start, i - start);
            if (!known.count(name) && !formulaFunctions.count(name))
                return "uses '" + name + "', which is no variable of the node";
        } else {
            depth += c == '(' ? 1 : c == ')' ? -1 : 0;
            if (depth < 0)
                return "closes a parenthesis it did not open";
            ++i;
        }
    }
    return depth == 0 ? std::string() : "leaves a parenthesis open";
}

void checkNodes(xmlNode* element, const std::set<std::string>& names, std::vector<SSchemaViolation>& found) {
    for (xmlNode* node = element; node; node = node->next) {
        if (node->type != XML_ELEMENT_NODE)
            continue;
        const std::string element = nameOf(node);
        const int line = static_cast<int>(xmlGetLineNo(node));
        if (isPointer(element) && !names.count(textOf(node))) {
            found.push_back(
                {line, element + " names '" + textOf(node) + "', which the description does not have"});
        } else if (isFormula(element) && node->parent) {
            const std::string problem = formulaProblem(textOf(node), namesOfNode(node->parent, element));
            if (!problem.empty())
                found.push_back(
                    {line, "The " + element + " of '" + attributeOf(node->parent, "Name") + "' " + problem});
        }
        checkNodes(node->children, names, found);
    }
}

}  // namespace

std::vector<SSchemaViolation> checkDescriptionLinks(const std::string& xml) {
    std::unique_ptr<xmlDoc, void (*)(xmlDoc*)> document(
        xmlReadMemory(xml.data(), static_cast<int>(xml.size()), "description.xml", nullptr,
                      XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING),
        xmlFreeDoc);
    if (!document)
        throw RUNTIME_EXCEPTION("The description is no XML");
    xmlNode* root = xmlDocGetRootElement(document.get());
    std::set<std::string> names;
    collectNames(root, names);
    std::vector<SSchemaViolation> found;
    checkNodes(root ? root->children : nullptr, names, found);
    return found;
}

}  // namespace GenApiEngine
