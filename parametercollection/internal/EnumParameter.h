// The parameter of a GenApi enumeration node.
#ifndef PARAMETERCOLLECTION_INTERNAL_ENUMPARAMETER_H
#define PARAMETERCOLLECTION_INTERNAL_ENUMPARAMETER_H

#include "../IEnumParameter.h"
#include "IEnumValueAdvancedParameterAccessSource.h"
#include "Parameter.h"
#include <QHash>
#include <atomic>

namespace ParameterCollection {
namespace Internal {

class PARAMETERCOLLECTION_EXPORT CEnumParameter : public IEnumParameter, public CParameter {
public:
    CEnumParameter(QString const& name, QString const& nodeMapName, QSharedPointer<CObjectState> state,
                   QSharedPointer<CModeratedParameterEventDecouplerThread> decoupler,
                   QObject* parent = nullptr);

    bool canSetValue(QString value) override;
    void setValue(QString value) override;
    QString getValue() override;
    qint64 getIntValue(bool verify, bool ignoreCache) override;
    QVector<QString> getAllValues() override;
    QVector<QString> getSettableValues() override;
    QString getValueOrDefault(QString defaultValue) override;
    bool trySetValue(QString value) override;
    void setValue(QList<QString> values) override;
    bool trySetValue(QList<QString> values) override;
    QSharedPointer<IAdvancedParameterAccess> getAdvancedValueProperties(QString value) override;

    EParameterType getParameterType() override;
    QString toString() override;
    void parseAndSetValue(QString const& value) override;
    bool attach(GENAPI_NAMESPACE::INodeMap* nodeMap) override;
    bool updateCachedParameterData() override;
    QSharedPointer<ParameterData> getCachedParameterData() override;

    void setEnumValueAdvancedParameterAccessSource(IEnumValueAdvancedParameterAccessSource* source);

private:
    // The entry's display name, or the name itself when the enumeration has no such entry. Snapshot
    // refreshes call it with the node map lock already released.
    QString displayNameOf(const QString& value);
    // Symbolic names of the entries whose access mode passes the test, in GenApi's order.
    QVector<QString> entryNames(bool (*accepted)(GENAPI_NAMESPACE::EAccessMode));
    bool refreshSettableValues(bool wasValid, CNodeMapLock& mapLock);
    // The symbolic name of an entry of the bound enumeration; under the state lock.
    QString symbolicOf(GENAPI_NAMESPACE::IEnumEntry* entry);

    // Written by attach under the state lock, read by operations that test it first without it.
    std::atomic<GENAPI_NAMESPACE::IEnumeration*> m_Enumeration;
    IEnumValueAdvancedParameterAccessSource* m_ValuePropertySource;
    // Entry names by entry, for the bound node map; guarded by the state lock.
    QHash<const GENAPI_NAMESPACE::IEnumEntry*, QString> m_Symbolics;
};

}  // namespace Internal
}  // namespace ParameterCollection

#endif
