// The lifecycle state of the camera behind a collection, shared by everything that touches its nodes.
#ifndef PARAMETERCOLLECTION_OBJECTSTATE_H
#define PARAMETERCOLLECTION_OBJECTSTATE_H

#include "ParameterCollectionExport.h"
#include <QObject>
#include <QString>
#include <atomic>

namespace ParameterCollection {

class CRecursiveMutex;

enum EObjectState : int { ObjectState_Disposed = 0, ObjectState_Open = 1, ObjectState_Closed = 2 };

// Open, closed or disposed; one recursive mutex serialises all work on the collection and its
// parameters, and the entry count says how many calls are inside the library. The accessors take no
// lock: callers hold lock() when consistency matters.
class PARAMETERCOLLECTION_EXPORT CObjectState : public QObject {
    Q_OBJECT

public:
    // The owner is remembered, not made the Qt parent.
    explicit CObjectState(QObject* owner);
    ~CObjectState() override;

    EObjectState getState() const { return m_State.load(std::memory_order_relaxed); }
    void setState(EObjectState state);
    int getEntryCount() const;
    void setEntryCount(int count);
    // Inline, since every guarded call counts itself in and out.
    void incrementEntryCount() { m_EntryCount.fetch_add(1, std::memory_order_relaxed); }
    void decrementEntryCount() { m_EntryCount.fetch_sub(1, std::memory_order_relaxed); }
    bool isInUse() const;
    void setIsInUse(bool inUse);
    QString getName() const;
    void setName(QString name);
    QObject* getOwner() const;

    void lock();
    void unlock();

private:
    // Both atomic: the owner sets the state and guards decrement the count without holding the mutex,
    // while other threads read them.
    std::atomic<EObjectState> m_State;
    std::atomic<int> m_EntryCount;
    bool m_IsInUse;
    QString m_Name;
    QObject* m_Owner;
    CRecursiveMutex* m_Mutex;
};

}  // namespace ParameterCollection

#endif
