// Waitable objects of the camera SDK: a manual-reset event that stays signalled once signalled.
#ifndef TAVRIN_WAITOBJECT_H
#define TAVRIN_WAITOBJECT_H

#include <memory>

#include "TavrinExport.h"

namespace Tavrin {

// Something a thread can wait for with a timeout in milliseconds.
class TAVRIN_EXPORT WaitObject {
public:
    virtual ~WaitObject();
    // Waits until the object is signalled or the timeout passes; true when signalled.
    bool Wait(unsigned int timeoutMs) const;
    bool IsSignalled() const;

protected:
    struct State;
    WaitObject();
    std::shared_ptr<State> m_State;
};

// An event: created signalled or not, set by Signal and cleared only by Reset.
class TAVRIN_EXPORT WaitObjectEx : public WaitObject {
public:
    static WaitObjectEx Create(bool signalled = false);
    void Signal();
    void Reset();

private:
    explicit WaitObjectEx(bool signalled);
};

}  // namespace Tavrin

#endif
