// The camera's category tree with a row per feature; what it shows follows a visibility level and a filter.
#ifndef TOOLS_CAMERAPARAMETERSVIEWER_FEATURETREE_H
#define TOOLS_CAMERAPARAMETERSVIEWER_FEATURETREE_H

#include "FeatureRow.h"
#include <GenApi/GenApi.h>
#include <QHash>
#include <QJsonObject>
#include <QTreeWidget>
#include <parametercollection/ParameterCollection.h>

class CFeatureTree : public QTreeWidget {
    Q_OBJECT

public:
    // The visibility levels the tree can show, in GenApi's order.
    static const QStringList visibilities;

    CFeatureTree(ParameterCollection::CParameterCollection& collection, GenApi::INodeMap* nodeMap,
                 QWidget* parent = nullptr);

    // Shows the features up to a level of `visibilities`, and of those only the ones whose name contains
    // the filter text (any case); categories show while they hold a shown feature.
    void setVisibility(const QString& visibility);
    void setFilter(const QString& text);
    CFeatureRow* row(const QString& name) const { return m_Rows.value(name); }
    // The features currently shown.
    QStringList shownFeatures() const;
    // The parameter of the current row, null on a category.
    QSharedPointer<ParameterCollection::IParameter> currentParameter() const;

signals:
    void refused(const QString& message);
    void refreshed(CFeatureRow* row);
    void deviceFailed(const QString& message);
    void written(const QString& message);

private:
    void addNode(const QJsonObject& object, QTreeWidgetItem* parent);
    bool applyFilters(QTreeWidgetItem* item);

    ParameterCollection::CParameterCollection& m_Collection;
    QHash<QString, CFeatureRow*> m_Rows;
    int m_MaxVisibility = 0;
    QString m_Filter;
};

#endif
