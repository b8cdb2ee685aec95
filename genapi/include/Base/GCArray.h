// An owning, non-copyable array.
#ifndef GENICAM_GCARRAY_H
#define GENICAM_GCARRAY_H

#include <Base/GCNamespace.h>
#include <stddef.h>

namespace GENICAM_NAMESPACE {

template <typename T>
class gcarray {
public:
    explicit gcarray(size_t size) : m_p(new T[size]) {}
    ~gcarray() { delete[] m_p; }
    T* get() const { return m_p; }
    T& operator*() const { return *m_p; }
    T& operator[](size_t i) const { return m_p[i]; }

private:
    gcarray(const gcarray&);
    gcarray& operator=(const gcarray&);
    T* m_p;
};

}  // namespace GENICAM_NAMESPACE

#endif
