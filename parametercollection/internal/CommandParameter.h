// The parameter of a GenApi command node.
#ifndef PARAMETERCOLLECTION_INTERNAL_COMMANDPARAMETER_H
#define PARAMETERCOLLECTION_INTERNAL_COMMANDPARAMETER_H

#include "../ICommandParameter.h"
#include "Parameter.h"
#include <atomic>
#include <GenApi/GenApi.h>

namespace ParameterCollection {
namespace Internal {

class PARAMETERCOLLECTION_EXPORT CCommandParameter : public ICommandParameter, public CParameter {
public:
    CCommandParameter(QString const& name, QString const& nodeMapName, QSharedPointer<CObjectState> state,
                      QSharedPointer<CModeratedParameterEventDecouplerThread> decoupler,
                      QObject* parent = nullptr);

    void execute(bool verify) override;
    bool isExecuting() override;
    bool isDone() override;
    bool tryExecute() override;

    EParameterType getParameterType() override;
    bool attach(GENAPI_NAMESPACE::INodeMap* nodeMap) override;
    bool updateCachedParameterData() override;
    QSharedPointer<ParameterData> getCachedParameterData() override;

private:
    // Written by attach under the state lock, read by operations that test it first without it.
    std::atomic<GENAPI_NAMESPACE::ICommand*> m_Command;
};

}  // namespace Internal
}  // namespace ParameterCollection

#endif
