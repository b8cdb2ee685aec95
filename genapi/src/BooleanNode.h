// Boolean nodes.
#ifndef GENAPI_ENGINE_BOOLEANNODE_H
#define GENAPI_ENGINE_BOOLEANNODE_H

#include <GenApi/IBoolean.h>
#include "ValueNode.h"

namespace GenApiEngine {

class CBooleanNode : public CValueNode, public virtual GenApi::IBoolean {
public:
    CBooleanNode(CNodeMapImpl& map, const SNodeDescription& description);

    GenICam::gcstring ToString(bool Verify = false, bool IgnoreCache = false) override;
    void FromString(const GenICam::gcstring& ValueStr, bool Verify = true) override;

    void SetValue(bool Value, bool Verify = true) override;
    bool GetValue(bool Verify = false, bool IgnoreCache = false) const override;

private:
    ArvGcBoolean* boolean(const char* method) const;
    // OnValue or OffValue as the description gives it, or GenApi's default.
    int64_t describedValue(const char* property, int64_t fallback) const;
    bool computeValue(bool Verify, bool IgnoreCache) const;

    mutable SCachedValue<bool> m_Value;
};

}  // namespace GenApiEngine

#endif
