// Cache queries of valued nodes, answered by the node map's register cache, and the value cache.
#include "ValueNode.h"
#include "NodeMapImpl.h"
#include <GenApi/IInteger.h>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>

namespace GenApiEngine {

bool CValueNode::IsValueCacheValid() const {
    CMapEntry entry(map());
    return map().values().holds(this);
}

void CValueNode::CCacheBypass::drop() const {
    if (m_Node)
        m_Node->map().values().drop(m_Node);
}

// A node keeps its value unless its caching mode, derived from the registers behind it, is NoCache (or the
// map's policy keeps nothing); the caching mode follows from the description alone, so it is asked once.
bool CValueNode::keepsValue() const {
    if (m_KeepsValue == GenApi::_UndefinedYesNo) {
        const bool keeps = GetCachingMode() != GenApi::NoCache;
        m_KeepsValue = keeps ? GenApi::Yes : GenApi::No;
    }
    return m_KeepsValue == GenApi::Yes;
}

bool CValueNode::writeToValueNode(int64_t value, bool verify) {
    GenApi::IInteger* target = dynamic_cast<GenApi::IInteger*>(pointee("pValue"));
    if (!target)
        return false;
    target->SetValue(value, verify);
    return true;
}

bool CValueNode::limitKeepsValue(const char* limit) const {
    if (description().has(limit))
        return true;
    const CValueNode* source = dynamic_cast<const CValueNode*>(pointee((std::string("p") + limit).c_str()));
    return source && source->keepsValue();
}

uint64_t CValueNode::valueClock() const {
    return map().values().clock();
}

uint64_t CValueNode::validSince() const {
    if (m_FollowsRegisterChanges == GenApi::_UndefinedYesNo)
        m_FollowsRegisterChanges = map().values().behindUnplacedRegister(this) ? GenApi::Yes : GenApi::No;
    return map().values().validSince(*this, m_FollowsRegisterChanges == GenApi::Yes);
}

bool CValueNode::verifyingValueCache() const {
    return map().values().verifying();
}

std::string CValueNode::describe(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
}

std::string CValueNode::describe(int64_t value) {
    char text[32];
    std::snprintf(text, sizeof text, "%" PRId64, value);
    return text;
}

CNodeBase* CValueNode::pointeeNamed(const std::string& name) const {
    return map().node(name);
}

}  // namespace GenApiEngine
