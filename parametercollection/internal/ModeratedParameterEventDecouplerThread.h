// A worker thread that turns bursts of node callbacks into one decoupled check per parameter.
#ifndef PARAMETERCOLLECTION_INTERNAL_MODERATEDPARAMETEREVENTDECOUPLERTHREAD_H
#define PARAMETERCOLLECTION_INTERNAL_MODERATEDPARAMETEREVENTDECOUPLERTHREAD_H

#include "../ObjectState.h"
#include "../ParameterCollectionExport.h"
#include "../RecursiveMutex.h"
#include <QSharedPointer>
#include <QThread>
#include <QVector>
#include <atomic>

namespace Tavrin {
class WaitObjectEx;
}

namespace ParameterCollection {
namespace Internal {

class CParameter;

// Parameters queue themselves (at most once each); every 30 ms the thread checks them in arrival
// order under the object-state lock, and each emits parameterDataChangedDecoupled if it changed.
class CModeratedParameterEventDecouplerThread : public QThread {
    Q_OBJECT

public:
    explicit CModeratedParameterEventDecouplerThread(QSharedPointer<CObjectState> objectState);
    ~CModeratedParameterEventDecouplerThread() override;

    // Queues a parameter; false for null or one already queued. Starts the thread on first use.
    bool pushParameterForDecoupledParameterDataChangedSignalling(CParameter* parameter);
    // Takes a parameter out of the queue; false for null or one not queued.
    bool removeParameterFromDecoupledParameterDataChangedSignalling(CParameter* parameter);
    // Ends the thread after its current drain: waits 30 s, then terminates it.
    void shutdown();

protected:
    void run() override;

private:
    struct SPendingQueue {
        CRecursiveMutex mutex;
        QVector<CParameter*> parameters;
    };

    void startOnce();
    void drainQueue();
    CParameter* takeFirst();

    SPendingQueue* m_Queue;
    Tavrin::WaitObjectEx* m_WakeUp;
    std::atomic<bool> m_Started;
    CRecursiveMutex m_StartMutex;
    QSharedPointer<CObjectState> m_ObjectState;
};

}  // namespace Internal
}  // namespace ParameterCollection

#endif
