// Depth-first export; filtered nodes give empty objects that their parent drops.
#include "NodemapToJsonConverter.h"
#include "VisibilityText.h"
#include <GenApi/GenApi.h>
#include <QJsonArray>

using namespace GENAPI_NAMESPACE;

namespace ParameterCollection {
namespace Internal {

QJsonObject CNodemapToJsonConverter::getJson(INode* root) {
    return visitNode(root);
}

QJsonObject CNodemapToJsonConverter::visitNode(INode* node) {
    QJsonObject object;
    if (!node->IsFeature() || node->GetAccessMode() == NI || node->GetVisibility() == Invisible)
        return object;
    object.insert("identifier", QString::fromLatin1(node->GetName(false).c_str()));
    object.insert("displayName", QString::fromLatin1(node->GetDisplayName().c_str()));
    object.insert("type", getNodeType(node));
    object.insert("visibility", getNodeVisibility(node));
    NodeList_t children;
    node->GetChildren(children, ctReadingChildren);
    if (children.empty())
        return object;
    QJsonArray visible;
    for (INode* child : children) {
        const QJsonObject childObject = visitNode(child);
        if (!childObject.isEmpty())
            visible.append(childObject);
    }
    object.insert("children", visible);
    return object;
}

// "ICommnad" is the text clients of this export know commands by.
QString CNodemapToJsonConverter::getNodeType(INode* node) {
    switch (node->GetPrincipalInterfaceType()) {
        case intfIInteger:
            return QStringLiteral("IInteger");
        case intfIBoolean:
            return QStringLiteral("IBoolean");
        case intfICommand:
            return QStringLiteral("ICommnad");
        case intfIFloat:
            return QStringLiteral("IFloat");
        case intfIString:
            return QStringLiteral("IString");
        case intfIRegister:
            return QStringLiteral("IRegister");
        case intfICategory:
            return QStringLiteral("ICategory");
        case intfIEnumeration:
            return QStringLiteral("IEnum");
        case intfIEnumEntry:
            return QStringLiteral("IEnumEntry");
        case intfIPort:
            return QStringLiteral("IPort");
        default:
            return QStringLiteral("<unknown-type>");
    }
}

QString CNodemapToJsonConverter::getNodeVisibility(INode* node) {
    return visibilityText(node->GetVisibility(), QStringLiteral("<undefined>"));
}

}  // namespace Internal
}  // namespace ParameterCollection
