// A list of feature writes carried out together by INodeMap::ConcatenatedWrite.
#ifndef GENAPI_CONCATENATEDWRITE_H
#define GENAPI_CONCATENATEDWRITE_H

#include <GenApi/GenApiDll.h>
#include <Base/GCException.h>
#include <Base/GCStringVector.h>

namespace GENAPI_NAMESPACE {

class GENAPI_DECL_ABSTRACT CNodeWriteConcatenator {
public:
    virtual void Add(const GENICAM_NAMESPACE::gcstring& NodeName,
                     const GENICAM_NAMESPACE::gcstring& ValueStr) = 0;
    virtual void Add(const GENICAM_NAMESPACE::gcstring& NodeName, const char* ValueStr) = 0;
    virtual void Add(const GENICAM_NAMESPACE::gcstring& NodeName, const int64_t Value) = 0;
    virtual void Add(const GENICAM_NAMESPACE::gcstring& NodeName, const double Value) = 0;
    virtual void Add(const GENICAM_NAMESPACE::gcstring& NodeName, const bool Value) = 0;
    virtual void Clear() = 0;
    virtual void Destroy() = 0;

protected:
    virtual ~CNodeWriteConcatenator() = 0;
};

inline CNodeWriteConcatenator::~CNodeWriteConcatenator() {}

// Owns one concatenator and forwards to it.
class CNodeWriteConcatenatorRef {
public:
    CNodeWriteConcatenatorRef() : m_pConcatenator(NULL) {}
    CNodeWriteConcatenatorRef(CNodeWriteConcatenator* p) : m_pConcatenator(p) {}
    virtual ~CNodeWriteConcatenatorRef() { Release(); }
    CNodeWriteConcatenatorRef& operator=(CNodeWriteConcatenator* p) {
        Release();
        m_pConcatenator = p;
        return *this;
    }
    template <typename V>
    void _Add(const GENICAM_NAMESPACE::gcstring& NodeName, V Value) {
        Checked()->Add(NodeName, Value);
    }
    void _Clear() { Checked()->Clear(); }
    void Release() {
        if (m_pConcatenator) {
            m_pConcatenator->Destroy();
            m_pConcatenator = NULL;
        }
    }
    CNodeWriteConcatenator* get() const { return m_pConcatenator; }
    operator CNodeWriteConcatenator*() const { return m_pConcatenator; }

private:
    CNodeWriteConcatenatorRef(const CNodeWriteConcatenatorRef&);
    CNodeWriteConcatenatorRef& operator=(const CNodeWriteConcatenatorRef&);
    CNodeWriteConcatenator* Checked() const {
        if (!m_pConcatenator)
            throw ACCESS_EXCEPTION("Concatenator not present (reference not valid)");
        return m_pConcatenator;
    }
    CNodeWriteConcatenator* m_pConcatenator;
};

}  // namespace GENAPI_NAMESPACE

#endif
