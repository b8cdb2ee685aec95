// Reference-counted handle of a node map, with the usual load and connect operations.
#ifndef GENAPI_NODEMAPREF_H
#define GENAPI_NODEMAPREF_H

#include <GenApi/INodeMap.h>
#include <GenApi/IDestroy.h>
#include <GenApi/NodeMapFactory.h>
#include <Base/GCException.h>
#include <cstdlib>

namespace GENAPI_NAMESPACE {

// Finds the IDestroy interface of a node map; raises when the map has none.
inline IDestroy* CastToIDestroy(INodeMap* pNodeMap) {
    IDestroy* pDestroy = dynamic_cast<IDestroy*>(pNodeMap);
    if (!pDestroy)
        throw LOGICAL_ERROR_EXCEPTION("Unexpected type in dynamic cast");
    return pDestroy;
}

// Empty parameter base for node maps loaded from generic descriptions.
class CGeneric_XMLLoaderParams {
protected:
    virtual void _Initialize(INodeMap*) {}

public:
    virtual ~CGeneric_XMLLoaderParams() {}
};

template <class TCameraParams>
class CNodeMapRefT : public TCameraParams {
public:
    CNodeMapRefT(const GENICAM_NAMESPACE::gcstring& DeviceName = "Device")
        : _Ptr(NULL), _pRefCount(NULL), _DeviceName(DeviceName) {}
    CNodeMapRefT(INodeMap* pNodeMap, const GENICAM_NAMESPACE::gcstring& DeviceName = "Device")
        : _Ptr(NULL), _pRefCount(NULL), _DeviceName(DeviceName) {
        Attach(pNodeMap, DeviceName, new int(0));
    }
    CNodeMapRefT(const CNodeMapRefT& Them) : TCameraParams(), _Ptr(NULL), _pRefCount(NULL) {
        Attach(Them._Ptr, Them._DeviceName, Them._pRefCount);
    }
    CNodeMapRefT& operator=(const CNodeMapRefT& Them) {
        if (this != &Them) {
            Release();
            Attach(Them._Ptr, Them._DeviceName, Them._pRefCount);
        }
        return *this;
    }
    CNodeMapRefT& operator=(INodeMap* pNodeMap) {
        Release();
        Attach(pNodeMap, pNodeMap ? pNodeMap->GetDeviceName() : GENICAM_NAMESPACE::gcstring("Device"),
               new int(0));
        return *this;
    }
    virtual ~CNodeMapRefT() { Release(); }

    void _Destroy() { Release(); }

    void _LoadXMLFromFile(const GENICAM_NAMESPACE::gcstring& FileName) {
        Load(CNodeMapFactory(ContentType_Xml, FileName), _DeviceName);
    }
    void _LoadXMLFromZIPFile(const GENICAM_NAMESPACE::gcstring& ZipFileName) {
        Load(CNodeMapFactory(ContentType_ZippedXml, ZipFileName), _DeviceName);
    }
    void _LoadXMLFromZIPData(const void* zipData, size_t zipSize) {
        Load(CNodeMapFactory(ContentType_ZippedXml, zipData, zipSize), "Device");
    }
    void _LoadXMLFromFileInject(const GENICAM_NAMESPACE::gcstring& TargetFileName,
                                const GENICAM_NAMESPACE::gcstring& InjectFileName) {
        CNodeMapFactory target(ContentType_Xml, TargetFileName);
        CNodeMapFactory inject(ContentType_Xml, InjectFileName);
        target.AddInjectionData(inject);
        Load(target, _DeviceName);
    }
    void _LoadXMLFromString(const GENICAM_NAMESPACE::gcstring& XMLData) {
        Load(CNodeMapFactory(XMLData), _DeviceName);
    }
    void _LoadXMLFromStringInject(const GENICAM_NAMESPACE::gcstring& TargetXMLDataString,
                                  const GENICAM_NAMESPACE::gcstring& InjectXMLDataString) {
        CNodeMapFactory target(TargetXMLDataString);
        CNodeMapFactory inject(InjectXMLDataString);
        target.AddInjectionData(inject);
        Load(target, "Device");
    }

    virtual void _GetSupportedSchemaVersions(GENICAM_NAMESPACE::gcstring_vector& SchemaVersions) const {
        CNodeMapFactory().GetSupportedSchemaVersions(SchemaVersions);
    }
    virtual GENICAM_NAMESPACE::gcstring _GetDeviceName() const { return Checked()->GetDeviceName(); }
    virtual void _Poll(int64_t ElapsedTime) { Checked()->Poll(ElapsedTime); }
    static bool _ClearXMLCache() { return CNodeMapFactory::ClearCache(); }
    virtual void _GetNodes(NodeList_t& Nodes) const { Checked()->GetNodes(Nodes); }
    virtual INode* _GetNode(const GENICAM_NAMESPACE::gcstring& key) const { return Checked()->GetNode(key); }
    virtual void _InvalidateNodes() const { Checked()->InvalidateNodes(); }
    virtual bool _ParseSwissKnifes(GENICAM_NAMESPACE::gcstring_vector* pErrorList = NULL) const {
        return Checked()->ParseSwissKnifes(pErrorList);
    }
    virtual bool _Connect(IPortStacked* pPort, const GENICAM_NAMESPACE::gcstring& PortName) const {
        return Checked()->Connect(pPort, PortName);
    }
    virtual bool _Connect(IPort* pPort, const GENICAM_NAMESPACE::gcstring& PortName) const {
        return Checked()->Connect(pPort, PortName);
    }
    virtual bool _Connect(IPortStacked* pPort) const { return Checked()->Connect(pPort); }
    virtual bool _Connect(IPort* pPort) const { return Checked()->Connect(pPort); }
    virtual void _SetSuppressCallbackMode(ECallbackSuppressMode Mode) const {
        Checked()->SetSuppressCallbackMode(Mode);
    }
    virtual CNodeWriteConcatenator* _NewNodeWriteConcatenator() const {
        return Checked()->NewNodeWriteConcatenator();
    }
    virtual bool _ConcatenatedWrite(CNodeWriteConcatenator* pConcatenatedWrite, bool featureStreaming = true,
                                    GENICAM_NAMESPACE::gcstring_vector* pErrorList = NULL) {
        return Checked()->ConcatenatedWrite(pConcatenatedWrite, featureStreaming, pErrorList);
    }

    INodeMap* _Ptr;

private:
    INodeMap* Checked() const {
        if (!_Ptr)
            throw ACCESS_EXCEPTION("Feature not present (reference not valid)");
        return _Ptr;
    }
    void Load(CNodeMapFactory factory, const GENICAM_NAMESPACE::gcstring& DeviceName) {
        if (_Ptr)
            throw RUNTIME_EXCEPTION("Node map already created");
        INodeMap* pNodeMap = factory.CreateNodeMap(DeviceName);
        Attach(pNodeMap, DeviceName, new int(0));
    }
    void Attach(INodeMap* pNodeMap, const GENICAM_NAMESPACE::gcstring& DeviceName, int* pRefCount) {
        _DeviceName = DeviceName;
        if (!pNodeMap) {
            if (pRefCount && *pRefCount == 0)
                delete pRefCount;
            return;
        }
        _Ptr = pNodeMap;
        _pRefCount = pRefCount;
        ++*_pRefCount;
        this->_Initialize(_Ptr);
    }
    void Release() {
        if (_Ptr) {
            if (--*_pRefCount == 0) {
                delete _pRefCount;
                CastToIDestroy(_Ptr)->Destroy();
            }
            _Ptr = NULL;
            _pRefCount = NULL;
        }
        _DeviceName = "Device";
    }

    int* _pRefCount;
    GENICAM_NAMESPACE::gcstring _DeviceName;
};

class CNodeMapRef : public CNodeMapRefT<GENAPI_NAMESPACE::CGeneric_XMLLoaderParams> {
public:
    CNodeMapRef(const GENICAM_NAMESPACE::gcstring& DeviceName = "Device")
        : CNodeMapRefT<GENAPI_NAMESPACE::CGeneric_XMLLoaderParams>(DeviceName) {}
    CNodeMapRef(INodeMap* pNodeMap, const GENICAM_NAMESPACE::gcstring& DeviceName = "Device")
        : CNodeMapRefT<GENAPI_NAMESPACE::CGeneric_XMLLoaderParams>(pNodeMap, DeviceName) {}
    CNodeMapRef(const CNodeMapRef& Them) : CNodeMapRefT<GENAPI_NAMESPACE::CGeneric_XMLLoaderParams>(Them) {}
    CNodeMapRef& operator=(const CNodeMapRef& Them) {
        CNodeMapRefT<GENAPI_NAMESPACE::CGeneric_XMLLoaderParams>::operator=(Them);
        return *this;
    }
    CNodeMapRef& operator=(INodeMap* pNodeMap) {
        CNodeMapRefT<GENAPI_NAMESPACE::CGeneric_XMLLoaderParams>::operator=(pNodeMap);
        return *this;
    }
};

}  // namespace GENAPI_NAMESPACE

#endif
