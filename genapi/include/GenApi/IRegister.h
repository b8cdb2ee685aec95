// Interface of register nodes.
#ifndef GENAPI_IREGISTER_H
#define GENAPI_IREGISTER_H

#include <GenApi/IValue.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT IRegister : virtual public IValue {
    virtual void Set(const uint8_t* pBuffer, int64_t Length, bool Verify = true) = 0;
    virtual void Get(uint8_t * pBuffer, int64_t Length, bool Verify = false, bool IgnoreCache = false) = 0;
    virtual int64_t GetLength(bool Verify = false) = 0;
    virtual int64_t GetAddress(bool Verify = false) = 0;
};

// A reference forwarding the register interface to a bound node.
template <class T, class I = IRegister>
class CRegisterRefT : public CValueRefT<T, I> {
public:
    virtual void Set(const uint8_t* pBuffer, int64_t Length, bool Verify = true) {
        this->Bound()->Set(pBuffer, Length, Verify);
    }
    virtual void Get(uint8_t* pBuffer, int64_t Length, bool Verify = false, bool IgnoreCache = false) {
        this->Bound()->Get(pBuffer, Length, Verify, IgnoreCache);
    }
    virtual int64_t GetLength(bool Verify = false) { return this->Bound()->GetLength(Verify); }
    virtual int64_t GetAddress(bool Verify = false) { return this->Bound()->GetAddress(Verify); }
};

typedef CRegisterRefT<IRegister> CRegisterRef;

}  // namespace GENAPI_NAMESPACE

#endif
