// Collects writes as texts so that the map can replay them through FromString.
#include "NodeWriteConcatenator.h"
#include <cstdio>

namespace GenApiEngine {

void CNodeWriteConcatenatorImpl::Add(const GenICam::gcstring& NodeName, const GenICam::gcstring& ValueStr) {
    m_Writes.emplace_back(NodeName.c_str(), ValueStr.c_str());
}

void CNodeWriteConcatenatorImpl::Add(const GenICam::gcstring& NodeName, const char* ValueStr) {
    m_Writes.emplace_back(NodeName.c_str(), ValueStr ? ValueStr : "");
}

void CNodeWriteConcatenatorImpl::Add(const GenICam::gcstring& NodeName, const int64_t Value) {
    m_Writes.emplace_back(NodeName.c_str(), std::to_string(Value));
}

void CNodeWriteConcatenatorImpl::Add(const GenICam::gcstring& NodeName, const double Value) {
    char text[40];
    std::snprintf(text, sizeof(text), "%.17g", Value);
    m_Writes.emplace_back(NodeName.c_str(), text);
}

void CNodeWriteConcatenatorImpl::Add(const GenICam::gcstring& NodeName, const bool Value) {
    m_Writes.emplace_back(NodeName.c_str(), Value ? "1" : "0");
}

}  // namespace GenApiEngine
