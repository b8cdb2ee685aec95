// The decoupler's queue, lazy start, 30 ms wake-ups, FIFO drain under the state lock, and shutdown.
#include "ModeratedParameterEventDecouplerThread.h"
#include "../ScopedObjectStateLock.h"
#include "AnnotatedMutexLocker.h"
#include "Parameter.h"
#include <QDebug>
#include <exception>
#include <tavrin/WaitObject.h>

namespace ParameterCollection {
namespace Internal {

namespace {
constexpr unsigned int wakeUpIntervalMs = 30;
constexpr unsigned long shutdownWaitMs = 30000;
}  // namespace

CModeratedParameterEventDecouplerThread::CModeratedParameterEventDecouplerThread(
    QSharedPointer<CObjectState> objectState)
    : QThread(nullptr),
      m_Queue(new SPendingQueue()),
      m_WakeUp(new Tavrin::WaitObjectEx(Tavrin::WaitObjectEx::Create(false))),
      m_Started(false),
      m_ObjectState(objectState) {}

CModeratedParameterEventDecouplerThread::~CModeratedParameterEventDecouplerThread() {
    shutdown();
    delete m_Queue;
    delete m_WakeUp;
}

// The flag is tested once without the lock and again under it, so the thread starts exactly once.
void CModeratedParameterEventDecouplerThread::startOnce() {
    if (m_Started)
        return;
    CAnnotatedMutexLocker lock(&m_StartMutex);
    if (m_Started)
        return;
    m_Started = true;
    start(QThread::InheritPriority);
}

bool CModeratedParameterEventDecouplerThread::pushParameterForDecoupledParameterDataChangedSignalling(
    CParameter* parameter) {
    startOnce();
    if (!parameter)
        return false;
    CAnnotatedMutexLocker lock(&m_Queue->mutex);
    if (m_Queue->parameters.contains(parameter))
        return false;
    m_Queue->parameters.append(parameter);
    return true;
}

bool CModeratedParameterEventDecouplerThread::removeParameterFromDecoupledParameterDataChangedSignalling(
    CParameter* parameter) {
    if (!parameter)
        return false;
    CScopedObjectStateLock stateLock(m_ObjectState.data());
    CAnnotatedMutexLocker lock(&m_Queue->mutex);
    const int index = m_Queue->parameters.indexOf(parameter);
    if (index < 0)
        return false;
    m_Queue->parameters.remove(index);
    return true;
}

void CModeratedParameterEventDecouplerThread::shutdown() {
    if (!m_Started)
        return;
    m_WakeUp->Signal();
    if (!wait(shutdownWaitMs))
        terminate();
}

void CModeratedParameterEventDecouplerThread::run() {
    while (!m_WakeUp->Wait(wakeUpIntervalMs))
        drainQueue();
}

CParameter* CModeratedParameterEventDecouplerThread::takeFirst() {
    CAnnotatedMutexLocker lock(&m_Queue->mutex);
    if (m_Queue->parameters.isEmpty())
        return nullptr;
    return m_Queue->parameters.takeFirst();
}

// One parameter at a time, each under the state lock, so that none is destroyed while it is checked.
void CModeratedParameterEventDecouplerThread::drainQueue() {
    for (;;) {
        CScopedObjectStateLock stateLock(m_ObjectState.data());
        CParameter* parameter = takeFirst();
        if (!parameter)
            return;
        try {
            parameter->checkParameterDataChanged();
        } catch (const std::exception& e) {
            qDebug("Event could not be forwarded:");
            qDebug(": %s", e.what());
        } catch (...) {
            qDebug("Event could not be forwarded");
            qDebug(": Unspecified exception occurred.");
        }
    }
}

}  // namespace Internal
}  // namespace ParameterCollection
