// CNodeMapFactory: keeps a description's text (read from a file, a ZIP or a string) and builds maps from it.
#include <GenApi/NodeMapFactory.h>
#include <Base/GCUtilities.h>
#include "DescriptionCache.h"
#include "NodeMapImpl.h"
#include "XmlEditing.h"
#include <arv.h>
#include <fstream>
#include <sstream>

using GENICAM_NAMESPACE::gcstring;

namespace GENAPI_NAMESPACE {

class CNodeMapFactoryData {
public:
    std::string xml;
    std::vector<std::string> injections;
    bool released = false;
    ECacheUsage_t cacheUsage = CacheUsage_Automatic;
};

namespace {

std::string readFile(const gcstring& fileName) {
    gcstring path = fileName;
    GENICAM_NAMESPACE::ReplaceEnvironmentVariables(path);
    std::ifstream file(path.c_str(), std::ios::binary);
    if (!file)
        throw RUNTIME_EXCEPTION("Cannot open the camera description file '%s'", path.c_str());
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

// The first XML file inside a ZIP archive.
std::string unzip(const void* data, size_t size) {
    ArvZip* zip = arv_zip_new(data, size);
    if (!zip)
        throw RUNTIME_EXCEPTION("The camera description archive cannot be read");
    std::string xml;
    for (const GSList* item = arv_zip_get_file_list(zip); item && xml.empty(); item = item->next) {
        const char* name = arv_zip_file_get_name(static_cast<ArvZipFile*>(item->data));
        const std::string entry = name ? name : "";
        if (entry.size() < 4 || entry.compare(entry.size() - 4, 4, ".xml") != 0)
            continue;
        size_t length = 0;
        void* content = arv_zip_get_file(zip, name, &length);
        if (content)
            xml.assign(static_cast<const char*>(content), length);
        g_free(content);
    }
    arv_zip_free(zip);
    if (xml.empty())
        throw RUNTIME_EXCEPTION("The camera description archive holds no XML file");
    return xml;
}

std::string decode(EContentType_t ContentType, const void* pData, size_t DataSize) {
    if (ContentType == ContentType_ZippedXml)
        return unzip(pData, DataSize);
    return std::string(static_cast<const char*>(pData), DataSize);
}

}  // namespace

CNodeMapFactory::CNodeMapFactory() : m_pData(std::make_shared<CNodeMapFactoryData>()) {}

CNodeMapFactory::CNodeMapFactory(EContentType_t ContentType, const gcstring& FileName,
                                 ECacheUsage_t CacheUsage, bool)
    : m_pData(std::make_shared<CNodeMapFactoryData>()) {
    m_pData->cacheUsage = CacheUsage;
    if (FileName.empty())
        throw INVALID_ARGUMENT_EXCEPTION("The camera description file name is empty");
    const std::string content = readFile(FileName);
    m_pData->xml = decode(ContentType, content.data(), content.size());
}

CNodeMapFactory::CNodeMapFactory(EContentType_t ContentType, const void* pData, size_t DataSize,
                                 ECacheUsage_t CacheUsage, bool)
    : m_pData(std::make_shared<CNodeMapFactoryData>()) {
    m_pData->cacheUsage = CacheUsage;
    if (!pData || DataSize == 0)
        throw INVALID_ARGUMENT_EXCEPTION("The camera description data is empty");
    m_pData->xml = decode(ContentType, pData, DataSize);
}

CNodeMapFactory::CNodeMapFactory(const gcstring& XmlData, ECacheUsage_t CacheUsage, bool)
    : m_pData(std::make_shared<CNodeMapFactoryData>()) {
    m_pData->cacheUsage = CacheUsage;
    if (XmlData.empty())
        throw INVALID_ARGUMENT_EXCEPTION("The camera description text is empty");
    m_pData->xml.assign(XmlData.c_str(), XmlData.size());
}

CNodeMapFactory::CNodeMapFactory(const CNodeMapFactory& other) : m_pData(other.m_pData) {}

CNodeMapFactory& CNodeMapFactory::operator=(const CNodeMapFactory& other) {
    m_pData = other.m_pData;
    return *this;
}

CNodeMapFactory::~CNodeMapFactory() {}

INodeMap* CNodeMapFactory::CreateNodeMap(const gcstring& DeviceName,
                                         bool DoReleaseCameraDescriptionFileData) {
    LoadAndInject();
    if (m_pData->xml.empty())
        throw RUNTIME_EXCEPTION("The factory holds no camera description");
    INodeMap* map =
        GenApiEngine::CNodeMapImpl::createFromXml(m_pData->xml, DeviceName, nullptr, m_pData->cacheUsage);
    if (DoReleaseCameraDescriptionFileData)
        ReleaseCameraDescriptionFileData();
    return map;
}

INodeMap* CNodeMapFactory::CreateNodeMap(CLock& UserProvidedLock, const gcstring& DeviceName,
                                         bool DoReleaseCameraDescriptionFileData) {
    LoadAndInject();
    if (m_pData->xml.empty())
        throw RUNTIME_EXCEPTION("The factory holds no camera description");
    INodeMap* map = GenApiEngine::CNodeMapImpl::createFromXml(m_pData->xml, DeviceName, &UserProvidedLock,
                                                              m_pData->cacheUsage);
    if (DoReleaseCameraDescriptionFileData)
        ReleaseCameraDescriptionFileData();
    return map;
}

INodeMap* CNodeMapFactory::CreateEmptyNodeMap() {
    return GenApiEngine::CNodeMapImpl::createFromXml(
        "<?xml version=\"1.0\"?><RegisterDescription ModelName=\"Empty\" VendorName=\"None\" "
        "SchemaMajorVersion=\"1\" SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\"/>",
        "Device", nullptr);
}

bool CNodeMapFactory::ClearCache() {
    return GenApiEngine::CDescriptionCache::fromEnvironment().clear();
}

void CNodeMapFactory::AddInjectionData(CNodeMapFactory& injectionData) {
    injectionData.LoadAndInject();
    m_pData->injections.push_back(injectionData.m_pData->xml);
}

CNodeMapFactory CNodeMapFactory::ExtractSubtree(const gcstring& RootNodeName, bool doRenameToRoot) {
    LoadAndInject();
    const std::string subtree =
        GenApiEngine::extractSubtree(m_pData->xml, RootNodeName.c_str(), doRenameToRoot);
    return CNodeMapFactory(gcstring(subtree.c_str(), subtree.size()));
}

void CNodeMapFactory::GetSupportedSchemaVersions(GENICAM_NAMESPACE::gcstring_vector& SchemaVersions) const {
    SchemaVersions.clear();
    SchemaVersions.push_back("1.0");
    SchemaVersions.push_back("1.1");
}

bool CNodeMapFactory::IsEmpty() const {
    return m_pData->xml.empty();
}

void CNodeMapFactory::LoadAndInject() {
    for (const std::string& injected : m_pData->injections) {
        m_pData->xml = GenApiEngine::injectDescription(m_pData->xml, injected);
    }
    m_pData->injections.clear();
}

bool CNodeMapFactory::IsLoaded() const {
    return !m_pData->xml.empty() && m_pData->injections.empty();
}

void CNodeMapFactory::Preprocess() {
    LoadAndInject();
}

bool CNodeMapFactory::IsPreprocessed() const {
    return IsLoaded();
}

void CNodeMapFactory::ReleaseCameraDescriptionFileData() {
    m_pData->released = true;
}

bool CNodeMapFactory::IsCameraDescriptionFileDataReleased() const {
    return m_pData->released;
}

gcstring CNodeMapFactory::ToString() {
    LoadAndInject();
    return gcstring(m_pData->xml.c_str(), m_pData->xml.size());
}

void CNodeMapFactory::ToXml(gcstring& XmlData) {
    XmlData = ToString();
}

}  // namespace GENAPI_NAMESPACE
