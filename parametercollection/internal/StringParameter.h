// The parameter of a GenApi string node.
#ifndef PARAMETERCOLLECTION_INTERNAL_STRINGPARAMETER_H
#define PARAMETERCOLLECTION_INTERNAL_STRINGPARAMETER_H

#include "../IStringParameter.h"
#include "Parameter.h"
#include <atomic>
#include <GenApi/GenApi.h>

namespace ParameterCollection {
namespace Internal {

class PARAMETERCOLLECTION_EXPORT CStringParameter : public IStringParameter, public CParameter {
public:
    CStringParameter(QString const& name, QString const& nodeMapName, QSharedPointer<CObjectState> state,
                     QSharedPointer<CModeratedParameterEventDecouplerThread> decoupler,
                     QObject* parent = nullptr);

    QString getValue() override;
    void setValue(QString value) override;
    qint64 getMaxLength() override;
    bool trySetValue(QString value) override;
    QString getValueOrDefault(QString defaultValue) override;

    EParameterType getParameterType() override;
    QString toString() override;
    void parseAndSetValue(QString const& value) override;
    bool attach(GENAPI_NAMESPACE::INodeMap* nodeMap) override;
    bool updateCachedParameterData() override;
    QSharedPointer<ParameterData> getCachedParameterData() override;

private:
    void announceAndWriteText(const QString& value);

    // Written by attach under the state lock, read by operations that test it first without it.
    std::atomic<GENAPI_NAMESPACE::IString*> m_String;
};

}  // namespace Internal
}  // namespace ParameterCollection

#endif
