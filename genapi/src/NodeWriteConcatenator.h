// The engine's list of concatenated writes: feature names with the values in text form.
#ifndef GENAPI_ENGINE_NODEWRITECONCATENATOR_H
#define GENAPI_ENGINE_NODEWRITECONCATENATOR_H

#include <GenApi/ConcatenatedWrite.h>
#include <string>
#include <utility>
#include <vector>

namespace GenApiEngine {

class CNodeWriteConcatenatorImpl : public GenApi::CNodeWriteConcatenator {
public:
    void Add(const GenICam::gcstring& NodeName, const GenICam::gcstring& ValueStr) override;
    void Add(const GenICam::gcstring& NodeName, const char* ValueStr) override;
    void Add(const GenICam::gcstring& NodeName, const int64_t Value) override;
    void Add(const GenICam::gcstring& NodeName, const double Value) override;
    void Add(const GenICam::gcstring& NodeName, const bool Value) override;
    void Clear() override { m_Writes.clear(); }
    void Destroy() override { delete this; }

    const std::vector<std::pair<std::string, std::string>>& writes() const { return m_Writes; }

private:
    std::vector<std::pair<std::string, std::string>> m_Writes;
};

}  // namespace GenApiEngine

#endif
