// String nodes: String and StringReg.
#ifndef GENAPI_ENGINE_STRINGNODE_H
#define GENAPI_ENGINE_STRINGNODE_H

#include <GenApi/IString.h>
#include "ValueNode.h"

namespace GenApiEngine {

class CStringNode : public CValueNode, public virtual GenApi::IString {
public:
    CStringNode(CNodeMapImpl& map, const SNodeDescription& description);

    GenICam::gcstring ToString(bool Verify = false, bool IgnoreCache = false) override;
    void FromString(const GenICam::gcstring& ValueStr, bool Verify = true) override;

    void SetValue(const GenICam::gcstring& Value, bool Verify = true) override;
    GenApi::IString& operator=(const GenICam::gcstring& Value) override;
    GenICam::gcstring GetValue(bool Verify = false, bool IgnoreCache = false) override;
    GenICam::gcstring operator()() override { return GetValue(); }
    GenICam::gcstring operator*() override { return GetValue(); }
    int64_t GetMaxLength(bool Verify = false) override;

protected:
    GenApi::EAccessMode naturalAccessMode() const override;

private:
    ArvGcString* string(const char* method) const;

    SCachedValue<GenICam::gcstring> m_Value;
};

}  // namespace GenApiEngine

#endif
