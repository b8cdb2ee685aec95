// A GenApi node tree as nested JSON: identifier, display name, type, visibility and children of every
// visible, implemented feature, depth first from a root node.
#ifndef PARAMETERCOLLECTION_INTERNAL_NODEMAPTOJSONCONVERTER_H
#define PARAMETERCOLLECTION_INTERNAL_NODEMAPTOJSONCONVERTER_H

#include "../ParameterCollectionExport.h"
#include <GenApi/GenApi.h>
#include <QJsonObject>
#include <QString>

namespace ParameterCollection {
namespace Internal {

class PARAMETERCOLLECTION_EXPORT CNodemapToJsonConverter {
public:
    // The tree below a node (typically the root category); the caller keeps the node map alive.
    static QJsonObject getJson(GENAPI_NAMESPACE::INode* root);
    // One node's object with its children's; empty for a node that is no feature, NI or invisible.
    static QJsonObject visitNode(GENAPI_NAMESPACE::INode* node);
    static QString getNodeType(GENAPI_NAMESPACE::INode* node);
    static QString getNodeVisibility(GENAPI_NAMESPACE::INode* node);
};

}  // namespace Internal
}  // namespace ParameterCollection

#endif
