// The tree, describe, genicam and execute commands: what a person exploring a camera wants to see of it.
#ifndef TOOLS_CAMERAPARAMETERS_FEATUREINSPECTOR_H
#define TOOLS_CAMERAPARAMETERS_FEATUREINSPECTOR_H

#include "ParameterPrinter.h"
#include <GenApi/GenApi.h>
#include <QJsonObject>
#include <QTextStream>
#include <parametercollection/ParameterCollection.h>

class CFeatureInspector {
public:
    CFeatureInspector(ParameterCollection::CParameterCollection& collection, GenApi::INodeMap* nodeMap,
                      QTextStream& out, QTextStream& err, bool json, const QString& visibility);

    // The category tree under Root (or a named node), indented, each feature with type, access and value.
    int tree(const QString& name);
    // Everything about one feature: texts, type, access, limits, entries, selectors, the node behind an
    // alias.
    int describe(const QString& name);
    // The camera description as the engine loaded it.
    int genicam();
    // Executes a command and waits (up to `seconds`) until the device reports it done.
    int execute(const QString& name, double seconds);

    QJsonObject jsonTree(const QJsonObject& node);
    static void insertPlace(QJsonObject& object, GenApi::INode* node);
    QJsonObject description(ParameterCollection::IParameter& parameter);

private:
    void printTree(const QJsonObject& node, int depth);
    QString featureName(const QString& name) const;
    GenApi::INode* node(const QString& name) const;

    ParameterCollection::CParameterCollection& m_Collection;
    GenApi::INodeMap* m_NodeMap;
    QTextStream& m_Out;
    QTextStream& m_Err;
    bool m_Json;
    int m_MaxVisibility;
    CParameterPrinter m_Printer;
};

#endif
