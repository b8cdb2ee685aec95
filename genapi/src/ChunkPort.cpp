// A chunk port: serves one chunk of the attached payload buffer, or the copy it kept of one.
#include <GenApi/GenApi.h>
#include <GenApi/ChunkPort.h>
#include "IdBytes.h"
#include "NodeMapImpl.h"
#include <cinttypes>
#include <cstring>

using namespace GENAPI_NAMESPACE;
using GENICAM_NAMESPACE::gcstring;

CChunkPort::CChunkPort(IPort* pPort)
    : m_pBaseAddress(NULL),
      m_ChunkOffset(0),
      m_Length(0),
      m_LengthAlloc(0),
      m_pChunkIDBuffer(NULL),
      m_ChunkIDLength(0),
      m_pChunkData(NULL),
      m_CacheData(false),
      m_ChunkIDNumber(0),
      m_ChunkIDNumberValid(false) {
    if (pPort)
        AttachPort(pPort);
}

CChunkPort::~CChunkPort() {
    DetachPort();
    delete[] m_pChunkData;
    delete[] m_pChunkIDBuffer;
}

EAccessMode CChunkPort::GetAccessMode() const {
    return m_pBaseAddress || m_pChunkData ? RW : NA;
}

EInterfaceType CChunkPort::GetPrincipalInterfaceType() const {
    return intfIPort;
}

void CChunkPort::Read(void* pBuffer, int64_t Address, int64_t Length) {
    AutoLock lock(GetLock());
    if (Address == CHUNK_BASE_ADDRESS_REGISTER && Length == CHUNK_BASE_ADDRESS_REGISTER_LEN) {
        const uint64_t base =
            reinterpret_cast<uintptr_t>(m_pBaseAddress ? m_pBaseAddress + m_ChunkOffset : m_pChunkData);
        std::memcpy(pBuffer, &base, sizeof base);
        return;
    }
    if (Address == CHUNK_LENGTH_REGISTER && Length == CHUNK_LENGTH_REGISTER_LEN) {
        std::memcpy(pBuffer, &m_Length, sizeof m_Length);
        return;
    }
    const uint8_t* data = m_pBaseAddress ? m_pBaseAddress + m_ChunkOffset : m_pChunkData;
    if (!data || Address < 0 || Length < 0 || Address + Length > m_Length)
        throw RUNTIME_EXCEPTION("Range error reading(%" PRIx64 ", %" PRId64 ")", Address, Length);
    std::memcpy(pBuffer, data + Address, static_cast<size_t>(Length));
}

// A write goes into the attached buffer (and the kept copy), where the application reads it too.
void CChunkPort::Write(const void* pBuffer, int64_t Address, int64_t Length) {
    AutoLock lock(GetLock());
    if ((!m_pBaseAddress && !m_pChunkData) || Address < 0 || Length < 0 || Address + Length > m_Length)
        throw RUNTIME_EXCEPTION("Range error writing(%" PRIx64 ", %" PRId64 ")", Address, Length);
    if (m_pBaseAddress)
        std::memcpy(m_pBaseAddress + m_ChunkOffset + Address, pBuffer, static_cast<size_t>(Length));
    if (m_pChunkData)
        std::memcpy(m_pChunkData + Address, pBuffer, static_cast<size_t>(Length));
}

void CChunkPort::SetPortImpl(IPort* pPort) {
    m_ptrPort = pPort;
}

void CChunkPort::SetPortImpl(IPortStacked* pPort) {
    m_ptrPort = dynamic_cast<INode*>(pPort);
}

void CChunkPort::InvalidateNode() {
    if (m_ptrPort.IsValid())
        m_ptrPort->InvalidateNode();
}

bool CChunkPort::AttachPort(IPort* pPort) {
    DetachPort();
    INode* node = dynamic_cast<INode*>(pPort);
    IChunkPort* chunkPort = dynamic_cast<IChunkPort*>(pPort);
    if (!node || !chunkPort)
        return false;
    const GENICAM_NAMESPACE::gcstring id = chunkPort->GetChunkID();
    if (id.empty())
        return false;
    GenApiEngine::keepId(id.c_str(), m_pChunkIDBuffer, m_ChunkIDLength, m_ChunkIDNumber,
                         m_ChunkIDNumberValid);
    m_CacheData = chunkPort->CacheChunkData() == Yes;
    m_ptrPort = node;
    node->GetNodeMap()->Connect(static_cast<IPort*>(this), node->GetName());
    return true;
}

void CChunkPort::DetachPort() {
    if (!m_ptrPort.IsValid())
        return;
    INode* node = m_ptrPort;
    if (auto* map = dynamic_cast<GenApiEngine::CNodeMapImpl*>(node->GetNodeMap()))
        map->disconnect(node->GetName().c_str());
    m_ptrPort = NULL;
}

void CChunkPort::AttachChunk(uint8_t* pBaseAddress, int64_t ChunkOffset, int64_t Length, bool Cache) {
    AutoLock lock(GetLock());
    m_pBaseAddress = pBaseAddress;
    m_ChunkOffset = ChunkOffset;
    m_Length = Length;
    if (!Cache || !m_CacheData) {
        delete[] m_pChunkData;
        m_pChunkData = NULL;
        m_LengthAlloc = 0;
        return;
    }
    if (m_LengthAlloc < Length || !m_pChunkData) {
        delete[] m_pChunkData;
        m_pChunkData = new uint8_t[Length > 0 ? Length : 1];
        m_LengthAlloc = Length;
    }
    std::memcpy(m_pChunkData, pBaseAddress + ChunkOffset, static_cast<size_t>(Length));
}

// Without the buffer, a kept copy stays readable until the cache is cleared.
void CChunkPort::DetachChunk() {
    m_pBaseAddress = NULL;
    m_ChunkOffset = 0;
    if (!m_pChunkData)
        m_Length = 0;
    InvalidateNode();
}

bool CChunkPort::CheckChunkID(uint8_t* pChunkIDBuffer, int ChunkIDLength) {
    return GenApiEngine::sameId(m_pChunkIDBuffer, m_ChunkIDLength, pChunkIDBuffer, ChunkIDLength);
}

bool CChunkPort::CheckChunkID(uint64_t ChunkID) {
    return m_ChunkIDNumberValid && m_ChunkIDNumber == ChunkID;
}

void CChunkPort::UpdateBuffer(uint8_t* pBaseAddress) {
    if (m_pBaseAddress) {
        m_pBaseAddress = pBaseAddress;
        if (m_pChunkData)
            std::memcpy(m_pChunkData, m_pBaseAddress + m_ChunkOffset, static_cast<size_t>(m_Length));
    }
    InvalidateNode();
}

void CChunkPort::ClearCache() {
    delete[] m_pChunkData;
    m_pChunkData = NULL;
    m_LengthAlloc = 0;
    if (!m_pBaseAddress)
        m_Length = 0;
    InvalidateNode();
}

CLock& CChunkPort::GetLock() const {
    if (!m_ptrPort.IsValid())
        throw RUNTIME_EXCEPTION("The event port is not attached to a node");
    return m_ptrPort->GetNodeMap()->GetLock();
}
