// Preprocessed descriptions kept on disk, so that a description loaded before is not parsed again: the
// folder GENICAM_CACHE_V3_4 names holds one entry per description text (keyed by its content) and
// architecture. An entry is written to a temporary file and renamed into place, so that processes sharing
// the folder see a whole entry or none; one that is truncated, damaged, of another engine version or
// another architecture is ignored, and the description is parsed as if there were none.
#ifndef GENAPI_ENGINE_DESCRIPTIONCACHE_H
#define GENAPI_ENGINE_DESCRIPTIONCACHE_H

#include "AravisDocument.h"
#include "ContentHash.h"
#include "XmlIndex.h"
#include <memory>
#include <string>

namespace GenApiEngine {

// What the engine builds from a description before it makes the nodes.
struct SPreparedDescription {
    std::unique_ptr<CXmlIndex> index;
    std::unique_ptr<CAravisDocument> aravis;
};

class CDescriptionCache {
public:
    // The cache of the folder the environment names; disabled when it names none.
    static CDescriptionCache fromEnvironment();
    explicit CDescriptionCache(std::string folder);

    bool enabled() const { return !m_Folder.empty(); }
    // The entry for a description text; false when there is none or it cannot be trusted.
    bool load(const std::string& xml, SPreparedDescription& prepared) const;
    // Writes the entry for a description text; false when it could not (the load goes on without it).
    bool store(const std::string& xml, const SPreparedDescription& prepared) const;
    // Removes every entry of the folder; false when one could not be removed.
    bool clear() const;
    // Where the entry of a description text is kept.
    std::string entryPath(const std::string& xml) const;

    // The bytes of an entry, and back; decode checks the entry against the description text it is for.
    static std::string encode(const std::string& xml, const SPreparedDescription& prepared);
    static bool decode(const std::string& entry, const std::string& xml, SPreparedDescription& prepared);
    // An entry around a payload, with the header that lets it be read for the description text.
    static std::string seal(const std::string& xml, const std::string& payload);

private:
    std::string entryPathOf(const SContentHash& key) const;
    static bool decodeFor(const std::string& entry, const SContentHash& key, uint64_t xmlSize,
                          SPreparedDescription& prepared);

    std::string m_Folder;
};

}  // namespace GenApiEngine

#endif
