// The parameter of a GenApi port: raw device memory, no text value.
#ifndef PARAMETERCOLLECTION_INTERNAL_PORTPARAMETER_H
#define PARAMETERCOLLECTION_INTERNAL_PORTPARAMETER_H

#include "../IPortParameter.h"
#include "Parameter.h"
#include <atomic>
#include <GenApi/GenApi.h>

namespace ParameterCollection {
namespace Internal {

class PARAMETERCOLLECTION_EXPORT CPortParameter : public IPortParameter, public CParameter {
public:
    CPortParameter(QString const& name, QString const& nodeMapName, QSharedPointer<CObjectState> state,
                   QSharedPointer<CModeratedParameterEventDecouplerThread> decoupler,
                   QObject* parent = nullptr);

    void readRaw(qint64 address, void* buffer, qint64 length) override;
    void writeRaw(qint64 address, void* buffer, qint64 length) override;

    void parseAndSetValue(QString const& value) override;
    bool attach(GENAPI_NAMESPACE::INodeMap* nodeMap) override;

private:
    // Zero lengths end at once; negative lengths and null buffers are refused. True when a transfer follows.
    static bool checkTransfer(void* buffer, qint64 length);
    GENAPI_NAMESPACE::IPort* requirePort();

    // Written by attach under the state lock, read by operations that test it first without it.
    std::atomic<GENAPI_NAMESPACE::IPort*> m_Port;
};

}  // namespace Internal
}  // namespace ParameterCollection

#endif
