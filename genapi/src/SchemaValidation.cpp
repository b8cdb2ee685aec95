// Schema validation with libxml2: the schema is chosen from the description's root attributes.
#include <GenApiEngine/DescriptionSchema.h>
#include "XmlIndex.h"
#include <Base/GCException.h>
#include <cstdlib>
#include <dlfcn.h>
#include <fstream>
#include <libxml/parser.h>
#include <libxml/xmlschemas.h>
#include <memory>

#ifndef GENAPI_ENGINE_SCHEMA_DIR
#define GENAPI_ENGINE_SCHEMA_DIR "schema"
#endif

namespace GenApiEngine {
namespace {

// Collects every error the validator reports, with its line.
void collectViolation(void* violations, xmlErrorPtr error) {
    if (!error || !error->message)
        return;
    std::string message = error->message;
    while (!message.empty() && (message.back() == '\n' || message.back() == ' '))
        message.pop_back();
    static_cast<std::vector<SSchemaViolation>*>(violations)
        ->push_back(SSchemaViolation{error->line, message});
}

std::string schemaFileFor(const std::string& xml, const std::string& folder) {
    const CXmlIndex index(xml);
    const std::string major = index.rootAttribute("SchemaMajorVersion");
    const std::string minor = index.rootAttribute("SchemaMinorVersion");
    const std::string file = folder + "/GenApiSchema_Version_" + major + "_" + minor + ".xsd";
    if (major.empty() || minor.empty() || !std::ifstream(file).good()) {
        throw RUNTIME_EXCEPTION("No schema for version '%s.%s' of the description in '%s'", major.c_str(),
                                minor.c_str(), folder.c_str());
    }
    return file;
}

}  // namespace

// The schemas beside an installed engine: <prefix>/share/genapi-engine/schema for <prefix>/lib[/arch].
std::string installedSchemaFolder() {
    Dl_info library{};
    if (!dladdr(reinterpret_cast<void*>(&installedSchemaFolder), &library) || !library.dli_fname)
        return std::string();
    std::string prefix = library.dli_fname;
    for (const char* marker : {"/lib/", "/lib64/"}) {
        const size_t at = prefix.rfind(marker);
        if (at != std::string::npos) {
            const std::string folder = prefix.substr(0, at) + "/share/genapi-engine/schema";
            if (std::ifstream(folder + "/NodeTypes.xsd").good())
                return folder;
        }
    }
    return std::string();
}

// GENAPI_ENGINE_SCHEMA_DIR when set, else the schemas of an installed engine, else those of the source tree.
std::string schemaFolder() {
    const char* overridden = std::getenv("GENAPI_ENGINE_SCHEMA_DIR");
    if (overridden && *overridden)
        return overridden;
    const std::string installed = installedSchemaFolder();
    return installed.empty() ? GENAPI_ENGINE_SCHEMA_DIR : installed;
}

std::vector<SSchemaViolation> validateDescription(const std::string& xml, const std::string& folder) {
    const std::string schemaFile = schemaFileFor(xml, folder);
    std::unique_ptr<xmlSchemaParserCtxt, void (*)(xmlSchemaParserCtxtPtr)> parser(
        xmlSchemaNewParserCtxt(schemaFile.c_str()), xmlSchemaFreeParserCtxt);
    std::unique_ptr<xmlSchema, void (*)(xmlSchemaPtr)> schema(parser ? xmlSchemaParse(parser.get()) : nullptr,
                                                              xmlSchemaFree);
    if (!schema)
        throw RUNTIME_EXCEPTION("The schema '%s' could not be read", schemaFile.c_str());
    std::unique_ptr<xmlDoc, void (*)(xmlDocPtr)> document(
        xmlReadMemory(xml.data(), static_cast<int>(xml.size()), "description.xml", nullptr,
                      XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING),
        xmlFreeDoc);
    if (!document)
        throw RUNTIME_EXCEPTION("The camera description is not well-formed XML");
    std::unique_ptr<xmlSchemaValidCtxt, void (*)(xmlSchemaValidCtxtPtr)> validator(
        xmlSchemaNewValidCtxt(schema.get()), xmlSchemaFreeValidCtxt);
    std::vector<SSchemaViolation> violations;
    xmlSchemaSetValidStructuredErrors(validator.get(), collectViolation, &violations);
    xmlSchemaValidateDoc(validator.get(), document.get());
    return violations;
}

}  // namespace GenApiEngine
