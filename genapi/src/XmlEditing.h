// Editing of description texts: injecting nodes of one description into another, extracting subtrees.
#ifndef GENAPI_ENGINE_XMLEDITING_H
#define GENAPI_ENGINE_XMLEDITING_H

#include <string>

struct _xmlDoc;

namespace GenApiEngine {

// The text of a parsed document.
std::string documentText(_xmlDoc* document);

// Adds every node of the injected description to the target; a node of the same name is replaced.
std::string injectDescription(const std::string& target, const std::string& injected);
// Keeps only the nodes reachable from the named node; optionally renames that node to "Root".
std::string extractSubtree(const std::string& xml, const std::string& rootName, bool renameToRoot);

}  // namespace GenApiEngine

#endif
