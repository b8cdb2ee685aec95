// The parameter of a GenApi boolean node.
#ifndef PARAMETERCOLLECTION_INTERNAL_BOOLEANPARAMETER_H
#define PARAMETERCOLLECTION_INTERNAL_BOOLEANPARAMETER_H

#include "../IBooleanParameter.h"
#include "Parameter.h"
#include <atomic>
#include <GenApi/GenApi.h>

namespace ParameterCollection {
namespace Internal {

class PARAMETERCOLLECTION_EXPORT CBooleanParameter : public IBooleanParameter, public CParameter {
public:
    CBooleanParameter(QString const& name, QString const& nodeMapName, QSharedPointer<CObjectState> state,
                      QSharedPointer<CModeratedParameterEventDecouplerThread> decoupler,
                      QObject* parent = nullptr);

    void setValue(bool value, bool verify) override;
    bool getValue(bool verify, bool ignoreCache) override;
    bool trySetValue(bool value) override;
    bool getValueOrDefault(bool defaultValue) override;

    EParameterType getParameterType() override;
    QString toString() override;
    void parseAndSetValue(QString const& value) override;
    bool attach(GENAPI_NAMESPACE::INodeMap* nodeMap) override;
    bool updateCachedParameterData() override;
    QSharedPointer<ParameterData> getCachedParameterData() override;

private:
    // Written by attach under the state lock, read by operations that test it first without it.
    std::atomic<GENAPI_NAMESPACE::IBoolean*> m_Boolean;
};

}  // namespace Internal
}  // namespace ParameterCollection

#endif
