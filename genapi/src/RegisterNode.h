// IRegister for register nodes, as a mixin over the node class of the register's value kind.
#ifndef GENAPI_ENGINE_REGISTERNODE_H
#define GENAPI_ENGINE_REGISTERNODE_H

#include <GenApi/IInteger.h>
#include <GenApi/IRegister.h>
#include "ValueNode.h"
#include "NodeMapImpl.h"
#include "TextForms.h"
#include <cinttypes>

namespace GenApiEngine {

template <class ValueNode>
class CRegisterNodeT : public ValueNode, public virtual GenApi::IRegister {
public:
    using ValueNode::ValueNode;

    void Set(const uint8_t* pBuffer, int64_t Length, bool Verify = true) override {
        CMapEntry entry(this->map());
        if (Verify)
            this->checkWritable("Set");
        checkLength(pBuffer, Length, "Set");
        if (Length == 0)
            return;
        this->arvCall("Set", [&](GError** e) {
            arv_gc_register_set(reg("Set"), const_cast<uint8_t*>(pBuffer), static_cast<guint64>(Length), e);
        });
        this->changed();
    }

    void Get(uint8_t* pBuffer, int64_t Length, bool = false, bool IgnoreCache = false) override {
        CMapEntry entry(this->map());
        const typename ValueNode::CCacheBypass bypass(*this, IgnoreCache);
        this->checkReadable("Get");
        checkLength(pBuffer, Length, "Get");
        if (Length == 0)
            return;
        this->arvCall("Get", [&](GError** e) {
            arv_gc_register_get(reg("Get"), pBuffer, static_cast<guint64>(Length), e);
        });
    }

    // A length from another node is read as a user reads it, access checked.
    int64_t GetLength(bool = false) override {
        CMapEntry entry(this->map());
        if (auto* length = dynamic_cast<GenApi::IInteger*>(this->pointee("pLength")))
            return length->GetValue();
        return static_cast<int64_t>(this->arvCall(
            "GetLength", [&](GError** e) { return arv_gc_register_get_length(reg("GetLength"), e); }));
    }

    int64_t GetAddress(bool = false) override {
        CMapEntry entry(this->map());
        const int64_t address = static_cast<int64_t>(this->arvCall(
            "GetAddress", [&](GError** e) { return arv_gc_register_get_address(reg("GetAddress"), e); }));
        return address - this->map().portOffset(this->description().value("pPort"));
    }

private:
    ArvGcRegister* reg(const char* method) const {
        if (!this->arvNode() || !ARV_IS_GC_REGISTER(this->arvNode())) {
            this->raise(EError::LogicalError, method, "node has no register");
        }
        return ARV_GC_REGISTER(this->arvNode());
    }

    void checkLength(const void* pBuffer, int64_t Length, const char* method) {
        const int64_t length = GetLength();
        if (!pBuffer || Length != length) {
            this->raise(EError::InvalidArgument, method,
                        formatText("the buffer must hold the register's %" PRId64 " bytes, not %" PRId64,
                                   length, Length));
        }
    }
};

// A plain Register node: its value is its bytes, shown in hex.
class CRawRegisterBase : public CValueNode {
public:
    CRawRegisterBase(CNodeMapImpl& map, const SNodeDescription& description)
        : CValueNode(map, description, GenApi::intfIRegister) {}

    GenICam::gcstring ToString(bool Verify = false, bool IgnoreCache = false) override;
    void FromString(const GenICam::gcstring& ValueStr, bool Verify = true) override;

protected:
    GenApi::EAccessMode naturalAccessMode() const override { return registerAccessMode(); }
};

typedef CRegisterNodeT<CRawRegisterBase> CRegisterNode;

}  // namespace GenApiEngine

#endif
