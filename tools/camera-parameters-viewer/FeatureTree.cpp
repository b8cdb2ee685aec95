// Building the tree from the node tree export, and showing or hiding rows by visibility and filter.
#include "FeatureTree.h"
#include <QHeaderView>
#include <QJsonArray>
#include <parametercollection/internal/NodemapToJsonConverter.h>

using namespace ParameterCollection;

namespace {
constexpr int visibilityRole = Qt::UserRole + 1;
constexpr int featureRole = Qt::UserRole + 2;
constexpr int nameRole = Qt::UserRole + 3;

// The feature's name and the description's tooltip, for the name column.
QString tooltipOf(const QString& name, const QString& tooltip) {
    return tooltip.isEmpty() ? name : name + "\n" + tooltip;
}
}  // namespace

const QStringList CFeatureTree::visibilities = {"Beginner", "Expert", "Guru"};

CFeatureTree::CFeatureTree(CParameterCollection& collection, GenApi::INodeMap* nodeMap, QWidget* parent)
    : QTreeWidget(parent), m_Collection(collection) {
    setHeaderLabels({tr("Name"), tr("Value"), tr("Unit"), tr("Access")});
    setUniformRowHeights(true);
    header()->setSectionResizeMode(CFeatureRow::NameColumn, QHeaderView::ResizeToContents);
    GenApi::INode* root = nodeMap ? nodeMap->GetNode("Root") : nullptr;
    if (root) {
        const QJsonObject tree = Internal::CNodemapToJsonConverter::getJson(root);
        for (const QJsonValue& child : tree["children"].toArray())
            addNode(child.toObject(), nullptr);
    }
    setColumnWidth(CFeatureRow::ValueColumn, 200);
    setColumnWidth(CFeatureRow::UnitColumn, 50);
    expandAll();
    setVisibility(visibilities.first());
}

void CFeatureTree::addNode(const QJsonObject& object, QTreeWidgetItem* parent) {
    const QString name = object["identifier"].toString();
    const QString type = object["type"].toString();
    if (name.isEmpty() || type == "IEnumEntry" || type == "IPort")
        return;
    QTreeWidgetItem* item = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(this);
    // People read the display name; the feature's name is kept for lookups, filters and the tooltip.
    const QString displayName = object["displayName"].toString();
    item->setText(CFeatureRow::NameColumn, displayName.isEmpty() ? name : displayName);
    item->setData(CFeatureRow::NameColumn, nameRole, name);
    item->setToolTip(CFeatureRow::NameColumn, name);
    const int visibility = visibilities.indexOf(object["visibility"].toString());
    item->setData(CFeatureRow::NameColumn, visibilityRole, visibility < 0 ? visibilities.size() : visibility);
    if (type == "ICategory") {
        QFont bold = item->font(CFeatureRow::NameColumn);
        bold.setBold(true);
        item->setFont(CFeatureRow::NameColumn, bold);
        for (const QJsonValue& child : object["children"].toArray())
            addNode(child.toObject(), item);
        return;
    }
    QSharedPointer<IParameter> parameter = m_Collection.get(ParameterName("@CameraDevice/" + name));
    if (!parameter)
        return;
    item->setData(CFeatureRow::NameColumn, featureRole, true);
    item->setToolTip(
        CFeatureRow::NameColumn,
        tooltipOf(name, parameter->getAdvancedParameterAccess()->getPropertyOrDefault("Tooltip", "")));
    auto row = new CFeatureRow(parameter, item);
    row->setParent(this);
    connect(row, &CFeatureRow::refused, this, &CFeatureTree::refused);
    connect(row, &CFeatureRow::refreshed, this, &CFeatureTree::refreshed);
    connect(row, &CFeatureRow::deviceFailed, this, &CFeatureTree::deviceFailed);
    connect(row, &CFeatureRow::written, this, &CFeatureTree::written);
    row->createEditor();
    if (!m_Rows.contains(name))
        m_Rows.insert(name, row);
}

void CFeatureTree::setVisibility(const QString& visibility) {
    m_MaxVisibility = qMax(0, visibilities.indexOf(visibility));
    for (int i = 0; i < topLevelItemCount(); ++i)
        applyFilters(topLevelItem(i));
}

void CFeatureTree::setFilter(const QString& text) {
    m_Filter = text.trimmed();
    for (int i = 0; i < topLevelItemCount(); ++i)
        applyFilters(topLevelItem(i));
}

// A feature shows when its visibility and name pass; a category when one of its children shows.
bool CFeatureTree::applyFilters(QTreeWidgetItem* item) {
    bool shown = item->data(CFeatureRow::NameColumn, visibilityRole).toInt() <= m_MaxVisibility;
    if (!item->data(CFeatureRow::NameColumn, featureRole).toBool()) {
        bool anyChild = false;
        for (int i = 0; i < item->childCount(); ++i)
            anyChild = applyFilters(item->child(i)) || anyChild;
        shown = shown && anyChild;
    } else if (!m_Filter.isEmpty()) {
        shown = shown && (item->text(CFeatureRow::NameColumn).contains(m_Filter, Qt::CaseInsensitive) ||
                          item->data(CFeatureRow::NameColumn, nameRole)
                              .toString()
                              .contains(m_Filter, Qt::CaseInsensitive));
    }
    item->setHidden(!shown);
    return shown;
}

QStringList CFeatureTree::shownFeatures() const {
    QStringList shown;
    for (auto row = m_Rows.cbegin(); row != m_Rows.cend(); ++row) {
        QTreeWidgetItem* item = row.value()->item();
        bool visible = !item->isHidden();
        for (QTreeWidgetItem* parent = item->parent(); visible && parent; parent = parent->parent())
            visible = !parent->isHidden();
        if (visible)
            shown.append(row.key());
    }
    shown.sort();
    return shown;
}

QSharedPointer<IParameter> CFeatureTree::currentParameter() const {
    QTreeWidgetItem* item = currentItem();
    CFeatureRow* found =
        item ? m_Rows.value(item->data(CFeatureRow::NameColumn, nameRole).toString()) : nullptr;
    return found ? m_Collection.get(ParameterName("@CameraDevice/" + found->parameter().getName()))
                 : QSharedPointer<IParameter>();
}
