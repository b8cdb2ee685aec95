// Text form of plain register nodes.
#include "RegisterNode.h"

using GENICAM_NAMESPACE::gcstring;

namespace GenApiEngine {

gcstring CRawRegisterBase::ToString(bool Verify, bool IgnoreCache) {
    CMapEntry entry(map());
    GenApi::IRegister* self = dynamic_cast<GenApi::IRegister*>(this);
    const int64_t length = self->GetLength();
    requireRegisterBuffer(length);
    std::vector<uint8_t> bytes(static_cast<size_t>(length));
    self->Get(bytes.data(), static_cast<int64_t>(bytes.size()), Verify, IgnoreCache);
    return bytesToText(bytes).c_str();
}

void CRawRegisterBase::FromString(const gcstring& ValueStr, bool Verify) {
    CMapEntry entry(map());
    GenApi::IRegister* self = dynamic_cast<GenApi::IRegister*>(this);
    std::vector<uint8_t> bytes;
    if (!textToBytes(ValueStr.c_str(), bytes)) {
        raise(EError::InvalidArgument, "FromString",
              formatText("Node '%s' : cannot convert string '%s' to register bytes.", name().c_str(),
                         ValueStr.c_str()));
    }
    const int64_t length = self->GetLength();
    requireRegisterBuffer(length);
    bytes.resize(static_cast<size_t>(length), 0);
    self->Set(bytes.data(), static_cast<int64_t>(bytes.size()), Verify);
}

}  // namespace GenApiEngine
