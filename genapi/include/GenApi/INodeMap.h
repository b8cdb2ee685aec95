// Interface of a node map: the set of nodes of one device description.
#ifndef GENAPI_INODEMAP_H
#define GENAPI_INODEMAP_H

#include <GenApi/INode.h>
#include <GenApi/IPort.h>
#include <GenApi/IPortStacked.h>
#include <GenApi/Synch.h>
#include <GenApi/ConcatenatedWrite.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT INodeMap {
    virtual void GetNodes(NodeList_t & Nodes) const = 0;
    virtual INode* GetNode(const GENICAM_NAMESPACE::gcstring& Name) const = 0;
    virtual void InvalidateNodes() const = 0;
    virtual bool Connect(IPort * pPort, const GENICAM_NAMESPACE::gcstring& PortName) const = 0;
    virtual bool Connect(IPort * pPort) const = 0;
    virtual bool Connect(IPortStacked * pPort, const GENICAM_NAMESPACE::gcstring& PortName) = 0;
    virtual bool Connect(IPortStacked * pPort) = 0;
    virtual GENICAM_NAMESPACE::gcstring GetDeviceName() = 0;
    virtual void Poll(int64_t ElapsedTime) = 0;
    virtual CLock& GetLock() const = 0;
    virtual uint64_t GetNumNodes() const = 0;
    virtual bool ParseSwissKnifes(GENICAM_NAMESPACE::gcstring_vector* pErrorList = NULL) const = 0;
    virtual CNodeWriteConcatenator* NewNodeWriteConcatenator() const = 0;
    virtual bool ConcatenatedWrite(CNodeWriteConcatenator * pConcatenatedWrite, bool featureStreaming = true,
                                   GENICAM_NAMESPACE::gcstring_vector* pErrorList = NULL) = 0;
    virtual void SetSuppressCallbackMode(ECallbackSuppressMode Mode) = 0;
};

}  // namespace GENAPI_NAMESPACE

#endif
