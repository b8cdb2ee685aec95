// Levenshtein distance over the map's features, letter case ignored.
#include "NameSuggestion.h"
#include <QVector>
#include <algorithm>

int CNameSuggestion::editDistance(const QString& a, const QString& b) {
    const QString x = a.toLower();
    const QString y = b.toLower();
    QVector<int> previous(y.size() + 1);
    QVector<int> current(y.size() + 1);
    for (int j = 0; j <= y.size(); ++j)
        previous[j] = j;
    for (int i = 1; i <= x.size(); ++i) {
        current[0] = i;
        for (int j = 1; j <= y.size(); ++j) {
            const int substitution = previous[j - 1] + (x[i - 1] == y[j - 1] ? 0 : 1);
            current[j] = std::min({previous[j] + 1, current[j - 1] + 1, substitution});
        }
        std::swap(previous, current);
    }
    return previous[y.size()];
}

QString CNameSuggestion::closestFeature(const QString& featureName, GENAPI_NAMESPACE::INodeMap* nodeMap) {
    if (!nodeMap || featureName.isEmpty())
        return QString();
    GENAPI_NAMESPACE::NodeList_t nodes;
    nodeMap->GetNodes(nodes);
    QString best;
    int bestDistance = std::max(2, static_cast<int>(featureName.size()) / 3) + 1;
    for (GENAPI_NAMESPACE::INode* node : nodes) {
        if (!node->IsFeature())
            continue;
        const QString candidate = QString::fromUtf8(node->GetName().c_str());
        const int distance = editDistance(featureName, candidate);
        if (distance < bestDistance) {
            best = candidate;
            bestDistance = distance;
        }
    }
    return best;
}

QString CNameSuggestion::unknownParameterText(const QString& name, GENAPI_NAMESPACE::INodeMap* nodeMap) {
    QString text = "Unknown parameter '" + name + "'.";
    const int slash = name.startsWith('@') ? name.indexOf('/') : -1;
    const QString feature = name.mid(slash + 1).section('/', 0, 0);
    const QString closest = closestFeature(feature, nodeMap);
    if (!closest.isEmpty() && closest != feature)
        text += " Did you mean '" + name.left(slash + 1) + closest + "'?";
    return text + "\n";
}
