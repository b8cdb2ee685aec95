// A counter that counts up on entry and down on exit, e.g. how deep a call has recursed.
#ifndef GENAPI_COUNTER_H
#define GENAPI_COUNTER_H

#include <GenApi/GenApiNamespace.h>
#include <stdint.h>

namespace GENAPI_NAMESPACE {

class CCounter {
public:
    CCounter() : m_Count(0) {}
    uint32_t operator++() { return ++m_Count; }
    uint32_t operator--() { return m_Count == 0 ? 0 : --m_Count; }
    operator uint32_t() const { return m_Count; }
    bool IsZero() const { return m_Count == 0; }

private:
    uint32_t m_Count;
};

// Holds a counter up for its lifetime.
class CCounterGuard {
public:
    explicit CCounterGuard(CCounter& Counter) : m_Counter(Counter) { ++m_Counter; }
    ~CCounterGuard() { --m_Counter; }

private:
    CCounterGuard(const CCounterGuard&);
    CCounterGuard& operator=(const CCounterGuard&);
    CCounter& m_Counter;
};

}  // namespace GENAPI_NAMESPACE

#endif
