// The description cache: maps loaded from an entry answer as maps parsed from the text, entries that
// cannot be trusted are ignored and rebuilt, the factory's cache usage and ClearCache behave as GenApi's,
// and loads from several threads share one folder. Also Aravis' model made node by node.
#include "MemoryDescriptions.h"
#include <AravisDocument.h>
#include <DescriptionCache.h>
#include <GenApi/GenApi.h>
#include <GenApi/EnumClasses.h>
#include <NodeMapImpl.h>
#include <SimulatedCamera.h>
#include <glib.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <cstdio>
#include <cstdlib>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>

extern char** environ;

using namespace GenApiEngine;

namespace {

// A fresh cache folder named by the environment for one test, removed afterwards.
class CCacheFolder {
public:
    CCacheFolder() {
        char* made = g_dir_make_tmp("genapi-cache-XXXXXX", nullptr);
        m_Path = made ? made : "";
        g_free(made);
        setenv(GENICAM_CACHE_VERSION, m_Path.c_str(), 1);
    }
    ~CCacheFolder() {
        unsetenv(GENICAM_CACHE_VERSION);
        CDescriptionCache(m_Path).clear();
        std::remove(m_Path.c_str());
    }
    const std::string& path() const { return m_Path; }
    CDescriptionCache cache() const { return CDescriptionCache(m_Path); }
    size_t entries() const {
        size_t count = 0;
        if (GDir* folder = g_dir_open(m_Path.c_str(), 0, nullptr)) {
            while (g_dir_read_name(folder))
                ++count;
            g_dir_close(folder);
        }
        return count;
    }

private:
    std::string m_Path;
};

std::string readBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::stringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

void writeBytes(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

// A map made with a cache usage, its ports connected to zero-filled register spaces in memory.
struct SFactoryMap {
    SFactoryMap(const std::string& xml, GenApi::ECacheUsage_t usage) {
        GenApi::CNodeMapFactory factory(GENICAM_NAMESPACE::gcstring(xml.c_str(), xml.size()), usage);
        map = factory.CreateNodeMap();
        GenApi::NodeList_t nodes;
        map->GetNodes(nodes);
        for (GenApi::INode* node : nodes) {
            if (node->GetPrincipalInterfaceType() != GenApi::intfIPort)
                continue;
            ports.emplace_back(new CMemoryPort());
            map->Connect(ports.back().get(), node->GetName());
        }
    }
    ~SFactoryMap() { dynamic_cast<GenApi::IDestroy*>(map)->Destroy(); }
    SFactoryMap(const SFactoryMap&) = delete;
    SFactoryMap& operator=(const SFactoryMap&) = delete;

    // Every node's name, access, visibility, display name and (when readable) value, one line each.
    std::string answers() const {
        GenApi::NodeList_t nodes;
        map->GetNodes(nodes);
        std::string text;
        for (GenApi::INode* node : nodes) {
            text += std::string(node->GetName().c_str());
            try {
                text += std::string(" ") + GenApi::EAccessModeClass::ToString(node->GetAccessMode()).c_str() +
                        " " + std::to_string(node->GetVisibility()) + " " + node->GetDisplayName().c_str();
                GenApi::IValue* value = dynamic_cast<GenApi::IValue*>(node);
                if (value && GenApi::IsReadable(node))
                    text += " = " + std::string(value->ToString().c_str());
            } catch (const GENICAM_NAMESPACE::GenericException& e) {
                text += std::string(" ! ") + e.GetDescription();
            }
            text += "\n";
        }
        return text;
    }

    GenApi::INodeMap* map = nullptr;
    std::vector<std::unique_ptr<CMemoryPort>> ports;
};

void loadOnce(const std::string& xml, GenApi::ECacheUsage_t usage) {
    SFactoryMap loaded(xml, usage);
}

// The descriptions to try by name: the simulated camera's always, the real ones beside the checkout when
// they are there.
std::vector<std::pair<std::string, std::string>> descriptionTexts() {
    std::vector<std::pair<std::string, std::string>> texts{
        {"simulated", SimCamera::CSimulatedCamera::description()}};
    for (const std::string& path : describedCameraPaths({PC_CAMERA_DESCRIPTIONS}))
        texts.emplace_back(describedCameraName(path), fileText(path));
    return texts;
}

}  // namespace

TEST(DescriptionCache, CachedMapsAnswerAsParsedMaps) {
    for (const auto& description : descriptionTexts()) {
        SCOPED_TRACE(description.first);
        const std::string& xml = description.second;
        std::string parsed;
        {
            SFactoryMap plain(xml, GenApi::CacheUsage_Ignore);
            parsed = plain.answers();
        }
        CCacheFolder folder;
        {
            SFactoryMap first(xml, GenApi::CacheUsage_Automatic);
            EXPECT_EQ(first.answers(), parsed);
        }
        const std::string entry = folder.cache().entryPath(xml);
        ASSERT_TRUE(g_file_test(entry.c_str(), G_FILE_TEST_IS_REGULAR)) << "the first load writes the entry";
        // The second load reads the entry rather than writing it again.
        struct stat before {};
        ::stat(entry.c_str(), &before);
        SFactoryMap second(xml, GenApi::CacheUsage_Automatic);
        EXPECT_EQ(second.answers(), parsed);
        struct stat after {};
        ::stat(entry.c_str(), &after);
        EXPECT_EQ(before.st_ino, after.st_ino) << "the entry was read, not replaced";
    }
}

TEST(DescriptionCache, EntriesThatCannotBeTrustedAreIgnoredAndRebuilt) {
    const std::string xml = SimCamera::CSimulatedCamera::description();
    const std::string parsed = SFactoryMap(xml, GenApi::CacheUsage_Ignore).answers();
    CCacheFolder folder;
    loadOnce(xml, GenApi::CacheUsage_Automatic);
    const std::string path = folder.cache().entryPath(xml);
    const std::string good = readBytes(path);
    ASSERT_GT(good.size(), 1000u);

    std::vector<std::pair<std::string, std::string>> damaged;
    for (size_t length : {size_t(0), size_t(7), size_t(8), size_t(40), good.size() / 2, good.size() - 1})
        damaged.emplace_back("truncated to " + std::to_string(length), good.substr(0, length));
    for (size_t at : {size_t(3), size_t(12), size_t(30), size_t(70), good.size() / 3, good.size() - 2}) {
        std::string flipped = good;
        flipped[at] = static_cast<char>(flipped[at] ^ 0x10);
        damaged.emplace_back("bit flipped at " + std::to_string(at), flipped);
    }
    damaged.emplace_back("grown by a byte", good + "x");
    damaged.emplace_back("a description text", xml);
    // An entry of another description (an empty map) under this description's name.
    const std::string other =
        "<?xml version=\"1.0\"?><RegisterDescription ModelName=\"Other\" VendorName=\"None\" "
        "SchemaMajorVersion=\"1\" SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\"/>";
    loadOnce(other, GenApi::CacheUsage_Automatic);
    damaged.emplace_back("another description's entry", readBytes(folder.cache().entryPath(other)));
    // An entry of another architecture or engine version: the same bytes but for the name they carry.
    for (const std::string& from :
         {std::string("x86_64-64le"), std::string("i386-32le"), std::string("GenApiEngine 3.4.0.0")}) {
        std::string foreign = good;
        const size_t at = foreign.find(from);
        if (at == std::string::npos)
            continue;
        foreign[at + from.size() - 1] = from.back() == 'e' ? 'b' : '9';
        damaged.emplace_back("foreign " + from, foreign);
    }

    for (const auto& entry : damaged) {
        SCOPED_TRACE(entry.first);
        writeBytes(path, entry.second);
        SPreparedDescription prepared;
        EXPECT_FALSE(CDescriptionCache::decode(entry.second, xml, prepared));
        SFactoryMap loaded(xml, GenApi::CacheUsage_Automatic);
        EXPECT_EQ(loaded.answers(), parsed);
        EXPECT_EQ(readBytes(path), good) << "the entry is written again";
    }
}

TEST(DescriptionCache, CacheUsageAndClearCache) {
    const std::string xml = SimCamera::CSimulatedCamera::description();
    CCacheFolder folder;
    const std::string path = folder.cache().entryPath(xml);

    // Ignore neither reads nor writes; ForceRead reads but does not write.
    loadOnce(xml, GenApi::CacheUsage_Ignore);
    loadOnce(xml, GenApi::CacheUsage_ForceRead);
    EXPECT_EQ(folder.entries(), 0u);

    // ForceWrite writes even over a valid entry; Automatic then reads it.
    loadOnce(xml, GenApi::CacheUsage_Automatic);
    ASSERT_EQ(folder.entries(), 1u);
    writeBytes(path, "not an entry");
    loadOnce(xml, GenApi::CacheUsage_ForceRead);
    EXPECT_EQ(readBytes(path), "not an entry");
    loadOnce(xml, GenApi::CacheUsage_ForceWrite);
    SPreparedDescription prepared;
    EXPECT_TRUE(CDescriptionCache::decode(readBytes(path), xml, prepared));

    // A file that is no entry stays; the entries go.
    writeBytes(folder.path() + "/notes.txt", "kept");
    EXPECT_TRUE(GenApi::CNodeMapFactory::ClearCache());
    EXPECT_EQ(folder.entries(), 1u);
    EXPECT_TRUE(g_file_test((folder.path() + "/notes.txt").c_str(), G_FILE_TEST_EXISTS));
    std::remove((folder.path() + "/notes.txt").c_str());

    // Without the environment variable nothing is written.
    unsetenv(GENICAM_CACHE_VERSION);
    loadOnce(xml, GenApi::CacheUsage_Automatic);
    EXPECT_EQ(folder.entries(), 0u);

    // The folder may name other variables; one that is not set leaves the cache off.
    setenv("DESCRIPTION_CACHE_TEST_ROOT", folder.path().c_str(), 1);
    setenv(GENICAM_CACHE_VERSION, "$(DESCRIPTION_CACHE_TEST_ROOT)/models", 1);
    loadOnce(xml, GenApi::CacheUsage_Automatic);
    const std::string inner = CDescriptionCache(folder.path() + "/models").entryPath(xml);
    EXPECT_TRUE(g_file_test(inner.c_str(), G_FILE_TEST_IS_REGULAR));
    EXPECT_TRUE(GenApi::CNodeMapFactory::ClearCache());
    std::remove((folder.path() + "/models").c_str());
    unsetenv("DESCRIPTION_CACHE_TEST_ROOT");
    EXPECT_NO_THROW(loadOnce(xml, GenApi::CacheUsage_Automatic));

    // A folder that cannot be made leaves the load as it is.
    setenv(GENICAM_CACHE_VERSION, "/proc/no-such-folder", 1);
    EXPECT_NO_THROW(loadOnce(xml, GenApi::CacheUsage_Automatic));
}

TEST(DescriptionCache, LoadsFromSeveralThreadsShareOneFolder) {
    const std::string xml = SimCamera::CSimulatedCamera::description();
    const std::string parsed = SFactoryMap(xml, GenApi::CacheUsage_Ignore).answers();
    CCacheFolder folder;
    std::vector<std::string> answers(4);
    std::vector<std::thread> threads;
    for (size_t t = 0; t < answers.size(); ++t) {
        threads.emplace_back([&, t] {
            for (int round = 0; round < 5; ++round) {
                // Half the loads rewrite the entry while the others read it.
                SFactoryMap loaded(xml, t % 2 ? GenApi::CacheUsage_ForceWrite : GenApi::CacheUsage_Automatic);
                if (loaded.answers() != parsed)
                    answers[t] = loaded.answers();
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    for (const std::string& answer : answers)
        EXPECT_EQ(answer, "");
    EXPECT_EQ(folder.entries(), 1u) << "no temporary file is left behind";
    SPreparedDescription prepared;
    EXPECT_TRUE(CDescriptionCache::decode(readBytes(folder.cache().entryPath(xml)), xml, prepared));
}

// One of the processes of the next test: loads the simulated camera's description ten times, half of them
// rewriting the entry, and fails when a map answers otherwise than one parsed from the text.
TEST(DescriptionCache, ChildProcessLoads) {
    if (!std::getenv("DESCRIPTION_CACHE_CHILD"))
        GTEST_SKIP() << "run by LoadsFromSeveralProcessesShareOneFolder";
    const std::string xml = SimCamera::CSimulatedCamera::description();
    const std::string parsed = SFactoryMap(xml, GenApi::CacheUsage_Ignore).answers();
    for (int round = 0; round < 10; ++round) {
        SFactoryMap loaded(xml, round % 2 ? GenApi::CacheUsage_ForceWrite : GenApi::CacheUsage_Automatic);
        ASSERT_EQ(loaded.answers(), parsed);
    }
}

TEST(DescriptionCache, LoadsFromSeveralProcessesShareOneFolder) {
    const std::string xml = SimCamera::CSimulatedCamera::description();
    CCacheFolder folder;
    setenv("DESCRIPTION_CACHE_CHILD", "1", 1);
    char self[] = "/proc/self/exe";
    char filter[] = "--gtest_filter=DescriptionCache.ChildProcessLoads";
    char* arguments[] = {self, filter, nullptr};
    std::vector<pid_t> children;
    for (int i = 0; i < 4; ++i) {
        pid_t child = 0;
        ASSERT_EQ(posix_spawn(&child, "/proc/self/exe", nullptr, nullptr, arguments, environ), 0);
        children.push_back(child);
    }
    unsetenv("DESCRIPTION_CACHE_CHILD");
    for (pid_t child : children) {
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "a process saw a wrong map";
    }
    EXPECT_EQ(folder.entries(), 1u) << "no temporary file is left behind";
    SPreparedDescription prepared;
    EXPECT_TRUE(CDescriptionCache::decode(readBytes(folder.cache().entryPath(xml)), xml, prepared));
}

// A node is handed to Aravis with what it reads when it is first evaluated; the rest of the description
// is not made at all.
TEST(AravisDocument, NodesAreMadeWhenFirstEvaluated) {
    const std::string xml = SimCamera::CSimulatedCamera::description();
    SFactoryMap loaded(xml, GenApi::CacheUsage_Ignore);
    const CNodeMapImpl* map = dynamic_cast<CNodeMapImpl*>(loaded.map);
    ASSERT_NE(map, nullptr);
    const size_t units = map->aravis().unitCount();
    EXPECT_GT(units, 50u);
    EXPECT_EQ(map->aravis().madeUnits(), 0u) << "loading makes no Aravis node";
    GenApi::CIntegerPtr width = loaded.map->GetNode("Width");
    ASSERT_TRUE(width.IsValid());
    width->GetValue();
    const size_t afterWidth = map->aravis().madeUnits();
    EXPECT_GT(afterWidth, 0u);
    EXPECT_LT(afterWidth, units / 2) << "only Width and what it reads";
    loaded.answers();
    EXPECT_GT(map->aravis().madeUnits(), afterWidth);
}
