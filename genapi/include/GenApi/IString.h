// Interface of string nodes.
#ifndef GENAPI_ISTRING_H
#define GENAPI_ISTRING_H

#include <GenApi/IValue.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT IString : virtual public IValue {
    virtual void SetValue(const GENICAM_NAMESPACE::gcstring& Value, bool Verify = true) = 0;
    virtual IString& operator=(const GENICAM_NAMESPACE::gcstring& Value) = 0;
    virtual GENICAM_NAMESPACE::gcstring GetValue(bool Verify = false, bool IgnoreCache = false) = 0;
    virtual GENICAM_NAMESPACE::gcstring operator()() = 0;
    virtual GENICAM_NAMESPACE::gcstring operator*() = 0;
    virtual int64_t GetMaxLength(bool Verify = false) = 0;
};

// A reference forwarding the string interface to a bound node.
template <class T, class I = IString>
class CStringRefT : public CValueRefT<T, I> {
public:
    virtual void SetValue(const GENICAM_NAMESPACE::gcstring& Value, bool Verify = true) {
        this->Bound()->SetValue(Value, Verify);
    }
    virtual IString& operator=(const GENICAM_NAMESPACE::gcstring& Value) {
        this->Bound()->SetValue(Value);
        return *this;
    }
    virtual GENICAM_NAMESPACE::gcstring GetValue(bool Verify = false, bool IgnoreCache = false) {
        return this->Bound()->GetValue(Verify, IgnoreCache);
    }
    virtual GENICAM_NAMESPACE::gcstring operator()() { return this->Bound()->GetValue(); }
    virtual GENICAM_NAMESPACE::gcstring operator*() { return this->Bound()->GetValue(); }
    virtual int64_t GetMaxLength(bool Verify = false) { return this->Bound()->GetMaxLength(Verify); }
};

typedef CStringRefT<IString> CStringRef;

}  // namespace GENAPI_NAMESPACE

#endif
