// Creates node maps from camera description files, buffers and strings.
#ifndef GENAPI_NODEMAPFACTORY_H
#define GENAPI_NODEMAPFACTORY_H

#include <GenApi/INodeMap.h>
#include <GenApi/Synch.h>
#include <Base/GCStringVector.h>
#include <memory>

namespace GENAPI_NAMESPACE {

typedef enum {
    CacheUsage_Automatic = 0,
    CacheUsage_ForceWrite = 1,
    CacheUsage_ForceRead = 2,
    CacheUsage_Ignore = 3
} ECacheUsage_t;

typedef enum { ContentType_Xml = 0, ContentType_ZippedXml = 1 } EContentType_t;

class CNodeMapFactoryData;

class GENAPI_DECL CNodeMapFactory {
public:
    CNodeMapFactory();
    CNodeMapFactory(EContentType_t ContentType, const GENICAM_NAMESPACE::gcstring& FileName,
                    ECacheUsage_t CacheUsage = CacheUsage_Automatic, bool SuppressStringsOnLoad = false);
    CNodeMapFactory(EContentType_t ContentType, const void* pData, size_t DataSize,
                    ECacheUsage_t CacheUsage = CacheUsage_Automatic, bool SuppressStringsOnLoad = false);
    CNodeMapFactory(const GENICAM_NAMESPACE::gcstring& XmlData,
                    ECacheUsage_t CacheUsage = CacheUsage_Automatic, bool SuppressStringsOnLoad = false);
    CNodeMapFactory(const CNodeMapFactory&);
    CNodeMapFactory& operator=(const CNodeMapFactory&);
    virtual ~CNodeMapFactory();

    INodeMap* CreateNodeMap(const GENICAM_NAMESPACE::gcstring& DeviceName = "Device",
                            bool DoReleaseCameraDescriptionFileData = true);
    INodeMap* CreateNodeMap(CLock& UserProvidedLock, const GENICAM_NAMESPACE::gcstring& DeviceName = "Device",
                            bool DoReleaseCameraDescriptionFileData = true);
    static INodeMap* CreateEmptyNodeMap();
    static bool ClearCache();
    void AddInjectionData(CNodeMapFactory& injectionData);
    CNodeMapFactory ExtractSubtree(const GENICAM_NAMESPACE::gcstring& RootNodeName,
                                   bool doRenameToRoot = false);
    void GetSupportedSchemaVersions(GENICAM_NAMESPACE::gcstring_vector& SchemaVersions) const;

    bool IsEmpty() const;
    void LoadAndInject();
    bool IsLoaded() const;
    void Preprocess();
    bool IsPreprocessed() const;
    void ReleaseCameraDescriptionFileData();
    bool IsCameraDescriptionFileDataReleased() const;
    // The description as loaded (with injections applied), as text.
    GENICAM_NAMESPACE::gcstring ToString();
    void ToXml(GENICAM_NAMESPACE::gcstring& XmlData);

private:
    std::shared_ptr<CNodeMapFactoryData> m_pData;
};

}  // namespace GENAPI_NAMESPACE

#endif
