// An event port: keeps the data of the last event with its node's EventID, for the node's registers.
#include <GenApi/GenApi.h>
#include <GenApi/EventPort.h>
#include "IdBytes.h"
#include "NodeMapImpl.h"
#include <cinttypes>
#include <cstring>

using namespace GENAPI_NAMESPACE;

CEventPort::CEventPort(INode* pNode)
    : m_pEventData(NULL),
      m_EventDataLength(0),
      m_EventDataAlloc(0),
      m_pEventIDBuffer(NULL),
      m_EventIDLength(0),
      m_IsAttachedToPortNode(false),
      m_EventIDNumber(0),
      m_EventIDNumberValid(false) {
    if (pNode)
        AttachNode(pNode);
}

CEventPort::~CEventPort() {
    DetachNode();
    delete[] m_pEventData;
    delete[] m_pEventIDBuffer;
}

EAccessMode CEventPort::GetAccessMode() const {
    return m_pEventData ? RO : NA;
}

EInterfaceType CEventPort::GetPrincipalInterfaceType() const {
    return intfIPort;
}

void CEventPort::Read(void* pBuffer, int64_t Address, int64_t Length) {
    AutoLock lock(GetLock());
    if (!m_pEventData || Address < 0 || Length < 0 || Address + Length > m_EventDataLength) {
        throw RUNTIME_EXCEPTION("CEventPort : Attempt to read address range [%" PRId64 ",%" PRId64
                                "] which is outside the buffers address range [0,%" PRId64 "]",
                                Address, Address + Length, m_EventDataLength);
    }
    std::memcpy(pBuffer, m_pEventData + Address, static_cast<size_t>(Length));
}

void CEventPort::Write(const void*, int64_t, int64_t) {
    throw ACCESS_EXCEPTION("CEventPort : event data cannot be written");
}

void CEventPort::SetPortImpl(IPort* pPort) {
    m_ptrNode = pPort;
}

void CEventPort::SetPortImpl(IPortStacked* pPort) {
    m_ptrNode = dynamic_cast<INode*>(pPort);
}

EYesNo CEventPort::GetSwapEndianess() {
    return No;
}

void CEventPort::InvalidateNode() {
    if (m_ptrNode.IsValid())
        m_ptrNode->InvalidateNode();
}

bool CEventPort::AttachNode(INode* pNode) {
    DetachNode();
    if (!pNode || pNode->GetEventID().empty())
        return false;
    GenApiEngine::keepId(pNode->GetEventID().c_str(), m_pEventIDBuffer, m_EventIDLength, m_EventIDNumber,
                         m_EventIDNumberValid);
    m_ptrNode = pNode;
    m_IsAttachedToPortNode = pNode->GetPrincipalInterfaceType() == intfIPort;
    if (m_IsAttachedToPortNode)
        pNode->GetNodeMap()->Connect(static_cast<IPort*>(this), pNode->GetName());
    return true;
}

void CEventPort::DetachNode() {
    if (!m_ptrNode.IsValid())
        return;
    INode* node = m_ptrNode;
    // Data that were delivered go first, and the node learns of it.
    if (m_pEventData)
        DetachEvent();
    if (m_IsAttachedToPortNode) {
        if (auto* map = dynamic_cast<GenApiEngine::CNodeMapImpl*>(node->GetNodeMap()))
            map->disconnect(node->GetName().c_str());
    }
    m_ptrNode = NULL;
    m_IsAttachedToPortNode = false;
    ResetEventDataBuffer();
}

int CEventPort::GetEventIDLength() {
    return m_EventIDLength;
}

bool CEventPort::CheckEventID(uint8_t* pEventIDBuffer, int EventIDLength) const {
    return GenApiEngine::sameId(m_pEventIDBuffer, m_EventIDLength, pEventIDBuffer, EventIDLength);
}

bool CEventPort::CheckEventID(uint64_t EventID) const {
    return m_EventIDNumberValid && m_EventIDNumber == EventID;
}

// A node that is no port only learns that its event arrived.
void CEventPort::AttachEvent(uint8_t* pBaseAddress, int64_t Length) {
    if (m_IsAttachedToPortNode) {
        AutoLock lock(GetLock());
        if (!m_pEventData || m_EventDataAlloc < Length) {
            delete[] m_pEventData;
            m_pEventData = new uint8_t[Length > 0 ? Length : 1];
            m_EventDataAlloc = Length;
        }
        if (Length > 0)
            std::memcpy(m_pEventData, pBaseAddress, static_cast<size_t>(Length));
        m_EventDataLength = Length;
    }
    InvalidateNode();
}

void CEventPort::DetachEvent() {
    ResetEventDataBuffer();
    InvalidateNode();
}

void CEventPort::ResetEventDataBuffer() {
    delete[] m_pEventData;
    m_pEventData = NULL;
    m_EventDataLength = 0;
    m_EventDataAlloc = 0;
}

CLock& CEventPort::GetLock() const {
    if (!m_ptrNode.IsValid())
        throw RUNTIME_EXCEPTION("The event port is not attached to a node");
    return m_ptrNode->GetNodeMap()->GetLock();
}
