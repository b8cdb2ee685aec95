// An entry is a header (magic, format, engine version, architecture, the description's hash and size, the
// payload's size and hash) and a payload: the index of the description (root attributes, nodes, names) and
// Aravis' compact form of its node elements. Numbers are written little-endian byte by byte, strings with
// their length; the reader checks every length against what is left, so that no entry can make it read
// outside the bytes or allocate more than they could hold.
#include "DescriptionCache.h"
#include "ContentHash.h"
#include <Base/GCUtilities.h>
#include <GenICamVersion.h>
#include <glib.h>
#include <glib/gstdio.h>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace GenApiEngine {
namespace {

const char magic[] = "GENAPIEC";
const uint32_t format = 1;
const char* const suffix = ".cache";

std::string engineVersion() {
    return std::string("GenApiEngine ") + GENICAM_VERSION_MAJOR_STR
           "." GENICAM_VERSION_MINOR_STR "." GENICAM_VERSION_SUBMINOR_STR "." GENICAM_VERSION_BUILD_STR;
}

// The processor family, word size and byte order the entry was written on.
std::string architecture() {
#if defined(__x86_64__)
    std::string family = "x86_64";
#elif defined(__i386__)
    std::string family = "i386";
#elif defined(__aarch64__)
    std::string family = "aarch64";
#elif defined(__arm__)
    std::string family = "arm";
#else
    std::string family = "cpu";
#endif
    const uint16_t probe = 1;
    const bool little = *reinterpret_cast<const uint8_t*>(&probe) == 1;
    return family + "-" + std::to_string(sizeof(void*) * 8) + (little ? "le" : "be");
}

class CWriter {
public:
    void u8(uint8_t value) { m_Bytes += static_cast<char>(value); }
    void u32(uint32_t value) {
        for (int shift = 0; shift < 32; shift += 8)
            u8(static_cast<uint8_t>(value >> shift));
    }
    void u64(uint64_t value) {
        u32(static_cast<uint32_t>(value));
        u32(static_cast<uint32_t>(value >> 32));
    }
    void string(const std::string& text) {
        u32(static_cast<uint32_t>(text.size()));
        m_Bytes += text;
    }
    void hash(const SContentHash& hash) {
        u64(hash.low);
        u64(hash.high);
    }
    std::string& bytes() { return m_Bytes; }

private:
    std::string m_Bytes;
};

class CReader {
public:
    CReader(const char* at, size_t size) : m_At(at), m_End(at + size) {}
    bool ok() const { return m_Ok; }
    bool atEnd() const { return m_At == m_End; }
    size_t left() const { return static_cast<size_t>(m_End - m_At); }
    uint8_t u8() { return take(1) ? static_cast<uint8_t>(m_At[-1]) : 0; }
    uint32_t u32() {
        uint32_t value = 0;
        for (int shift = 0; shift < 32; shift += 8)
            value |= static_cast<uint32_t>(u8()) << shift;
        return value;
    }
    uint64_t u64() {
        const uint64_t low = u32();
        return low | static_cast<uint64_t>(u32()) << 32;
    }
    std::string string() {
        const uint32_t size = u32();
        if (!take(size))
            return std::string();
        return std::string(m_At - size, size);
    }
    SContentHash hash() {
        SContentHash hash;
        hash.low = u64();
        hash.high = u64();
        return hash;
    }
    // A count of items of at least itemSize bytes each, refused when the bytes left cannot hold them.
    uint32_t count(size_t itemSize) {
        const uint32_t items = u32();
        if (items > left() / itemSize)
            m_Ok = false;
        return m_Ok ? items : 0;
    }

private:
    bool take(size_t size) {
        if (!m_Ok || size > left()) {
            m_Ok = false;
            return false;
        }
        m_At += size;
        return true;
    }
    const char* m_At;
    const char* m_End;
    bool m_Ok = true;
};

void writeIndex(CWriter& out, const CXmlIndex& index) {
    out.u32(static_cast<uint32_t>(index.rootAttributes().size()));
    for (const auto& attribute : index.rootAttributes()) {
        out.string(attribute.first);
        out.string(attribute.second);
    }
    out.u32(static_cast<uint32_t>(index.nodes().size()));
    for (const SNodeDescription& node : index.nodes()) {
        for (const std::string* text :
             {&node.name, &node.xmlName, &node.definedName, &node.tag, &node.nameSpace, &node.parent})
            out.string(*text);
        out.u32(static_cast<uint32_t>(node.properties.size()));
        for (const SProperty& property : node.properties) {
            out.string(property.name);
            out.string(property.value);
            out.string(property.attribute);
        }
        out.u32(static_cast<uint32_t>(node.entries.size()));
        for (const std::string& entry : node.entries)
            out.string(entry);
        out.u32(node.rank);
        out.u8(node.implied ? 1 : 0);
    }
    out.u32(static_cast<uint32_t>(index.byName().size()));
    for (const auto& name : index.byName()) {
        out.string(name.first);
        out.u32(static_cast<uint32_t>(name.second));
    }
}

SNodeDescription readNode(CReader& in) {
    SNodeDescription node;
    for (std::string* text :
         {&node.name, &node.xmlName, &node.definedName, &node.tag, &node.nameSpace, &node.parent})
        *text = in.string();
    node.properties.resize(in.count(12));
    for (SProperty& property : node.properties) {
        property.name = in.string();
        property.value = in.string();
        property.attribute = in.string();
    }
    node.entries.resize(in.count(4));
    for (std::string& entry : node.entries)
        entry = in.string();
    node.rank = in.u32();
    node.implied = in.u8() != 0;
    return node;
}

std::unique_ptr<CXmlIndex> readIndex(CReader& in) {
    std::map<std::string, std::string> rootAttributes;
    for (uint32_t i = in.count(8); i > 0 && in.ok(); --i) {
        std::string name = in.string();
        rootAttributes[name] = in.string();
    }
    std::vector<SNodeDescription> nodes(in.count(37));
    for (SNodeDescription& node : nodes)
        node = readNode(in);
    std::map<std::string, size_t> byName;
    for (uint32_t i = in.count(8); i > 0 && in.ok(); --i) {
        std::string name = in.string();
        const uint32_t position = in.u32();
        if (position >= nodes.size())
            return nullptr;
        byName.emplace_hint(byName.end(), std::move(name), position);
    }
    if (!in.ok())
        return nullptr;
    return std::unique_ptr<CXmlIndex>(
        new CXmlIndex(std::move(nodes), std::move(byName), std::move(rootAttributes)));
}

void writeAravis(CWriter& out, const CAravisDocument& aravis) {
    out.string(aravis.rootText());
    out.string(aravis.units());
    out.u32(static_cast<uint32_t>(aravis.offsets().size()));
    for (uint32_t offset : aravis.offsets())
        out.u32(offset);
}

std::unique_ptr<CAravisDocument> readAravis(CReader& in) {
    std::string rootText = in.string();
    std::string units = in.string();
    std::vector<uint32_t> offsets(in.count(4));
    for (uint32_t& offset : offsets)
        offset = in.u32();
    if (!in.ok())
        return nullptr;
    return std::unique_ptr<CAravisDocument>(
        CAravisDocument::fromUnits(std::move(rootText), std::move(units), std::move(offsets)));
}

bool readFile(const std::string& path, std::string& bytes) {
    FILE* file = std::fopen(path.c_str(), "rb");
    if (!file)
        return false;
    char buffer[65536];
    size_t got = 0;
    while ((got = std::fread(buffer, 1, sizeof buffer, file)) > 0)
        bytes.append(buffer, got);
    const bool failed = std::ferror(file) != 0;
    std::fclose(file);
    return !failed;
}

bool writeAll(int descriptor, const std::string& bytes) {
    size_t written = 0;
    while (written < bytes.size()) {
        const ssize_t step = ::write(descriptor, bytes.data() + written, bytes.size() - written);
        if (step < 0 && errno == EINTR)
            continue;
        if (step <= 0)
            return false;
        written += static_cast<size_t>(step);
    }
    return true;
}

// Entries of every architecture, and the temporary files of writes that did not finish.
bool isEntryName(const char* name) {
    const std::string text(name);
    if (text.size() < 34 || text[32] != '-' || text.find(suffix) == std::string::npos)
        return false;
    for (size_t i = 0; i < 32; ++i) {
        if (!g_ascii_isxdigit(text[i]))
            return false;
    }
    return true;
}

}  // namespace

// The folder may name other variables, as "$(HOME)/.cache/genicam", as GenApi's file names may; one that
// is not set leaves the cache off rather than failing the load.
CDescriptionCache CDescriptionCache::fromEnvironment() {
    const char* folder = std::getenv(GENICAM_CACHE_VERSION);
    if (!folder || !*folder)
        return CDescriptionCache("");
    GENICAM_NAMESPACE::gcstring path(folder);
    try {
        GENICAM_NAMESPACE::ReplaceEnvironmentVariables(path);
    } catch (const GENICAM_NAMESPACE::GenericException&) {
        return CDescriptionCache("");
    }
    return CDescriptionCache(path.c_str());
}

CDescriptionCache::CDescriptionCache(std::string folder) : m_Folder(std::move(folder)) {}

std::string CDescriptionCache::entryPath(const std::string& xml) const {
    return entryPathOf(contentHash(xml.data(), xml.size()));
}

std::string CDescriptionCache::entryPathOf(const SContentHash& key) const {
    return m_Folder + "/" + key.text() + "-" + architecture() + suffix;
}

std::string CDescriptionCache::encode(const std::string& xml, const SPreparedDescription& prepared) {
    CWriter payload;
    writeIndex(payload, *prepared.index);
    writeAravis(payload, *prepared.aravis);
    return seal(xml, payload.bytes());
}

std::string CDescriptionCache::seal(const std::string& xml, const std::string& payload) {
    CWriter entry;
    entry.bytes().append(magic, 8);
    entry.u32(format);
    entry.string(engineVersion());
    entry.string(architecture());
    entry.hash(contentHash(xml.data(), xml.size()));
    entry.u64(xml.size());
    entry.u64(payload.size());
    entry.hash(contentHash(payload.data(), payload.size()));
    entry.bytes() += payload;
    return std::move(entry.bytes());
}

bool CDescriptionCache::decode(const std::string& entry, const std::string& xml,
                               SPreparedDescription& prepared) {
    return decodeFor(entry, contentHash(xml.data(), xml.size()), xml.size(), prepared);
}

bool CDescriptionCache::decodeFor(const std::string& entry, const SContentHash& key, uint64_t xmlSize,
                                  SPreparedDescription& prepared) {
    if (entry.compare(0, 8, std::string(magic, 8)) != 0)
        return false;
    CReader header(entry.data() + 8, entry.size() - 8);
    if (header.u32() != format || header.string() != engineVersion() || header.string() != architecture())
        return false;
    const SContentHash description = header.hash();
    if (header.u64() != xmlSize || description != key)
        return false;
    const uint64_t size = header.u64();
    const SContentHash sum = header.hash();
    if (!header.ok() || size != header.left())
        return false;
    const char* bytes = entry.data() + (entry.size() - header.left());
    if (contentHash(bytes, header.left()) != sum)
        return false;
    CReader payload(bytes, header.left());
    std::unique_ptr<CXmlIndex> index = readIndex(payload);
    std::unique_ptr<CAravisDocument> aravis = index ? readAravis(payload) : nullptr;
    if (!aravis || !payload.ok() || !payload.atEnd())
        return false;
    prepared.index = std::move(index);
    prepared.aravis = std::move(aravis);
    return true;
}

bool CDescriptionCache::load(const std::string& xml, SPreparedDescription& prepared) const {
    if (!enabled())
        return false;
    const SContentHash key = contentHash(xml.data(), xml.size());
    std::string entry;
    return readFile(entryPathOf(key), entry) && decodeFor(entry, key, xml.size(), prepared);
}

// The temporary file is made in the folder itself, so that the rename that publishes it cannot cross file
// systems; readers keep whatever entry they opened.
bool CDescriptionCache::store(const std::string& xml, const SPreparedDescription& prepared) const {
    if (!enabled() || g_mkdir_with_parents(m_Folder.c_str(), 0755) != 0)
        return false;
    const std::string path = entryPath(xml);
    std::string temporary = path + ".XXXXXX";
    const int descriptor = g_mkstemp(&temporary[0]);
    if (descriptor < 0)
        return false;
    bool written = false;
    try {
        written = writeAll(descriptor, encode(xml, prepared));
    } catch (const std::exception&) {
        written = false;
    }
    written = ::fchmod(descriptor, 0644) == 0 && written;
    written = ::close(descriptor) == 0 && written;
    if (written && std::rename(temporary.c_str(), path.c_str()) == 0)
        return true;
    std::remove(temporary.c_str());
    return false;
}

bool CDescriptionCache::clear() const {
    if (!enabled())
        return true;
    GDir* folder = g_dir_open(m_Folder.c_str(), 0, nullptr);
    if (!folder)
        return true;
    bool removed = true;
    while (const char* name = g_dir_read_name(folder)) {
        if (isEntryName(name))
            removed = std::remove((m_Folder + "/" + name).c_str()) == 0 && removed;
    }
    g_dir_close(folder);
    return removed;
}

}  // namespace GenApiEngine
