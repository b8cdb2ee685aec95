// Checking a camera description against the GenICam schema its header declares.
#ifndef GENAPI_ENGINE_DESCRIPTIONSCHEMA_H
#define GENAPI_ENGINE_DESCRIPTIONSCHEMA_H

#include <GenApi/GenApiDll.h>
#include <string>
#include <vector>

namespace GenApiEngine {

// One place where a description breaks its schema.
struct SSchemaViolation {
    int line;             // line in the description, 1-based (0 when the validator names none)
    std::string message;  // the validator's text
};

// The folder with the GenApi schemas the engine ships (GENAPI_ENGINE_SCHEMA_DIR overrides it).
GENAPI_DECL std::string schemaFolder();

// Validates a description (XML text) against GenApiSchema_Version_<major>_<minor>.xsd of the folder,
// as SchemaMajorVersion and SchemaMinorVersion of its root element name it. Loading stays lenient; this
// tells a description's author what a strict GenApi would refuse. Throws GenICam::RuntimeException when
// the text is not XML or the folder has no schema of that version.
GENAPI_DECL std::vector<SSchemaViolation> validateDescription(const std::string& xml,
                                                              const std::string& folder = schemaFolder());

// What the schema cannot see, each with its line: pointer elements (pValue, pFeature, ...) naming a node
// the description does not have, and formulas with unbalanced parentheses or a name that is neither a
// variable, constant or expression of their node nor a GenICam function. Throws GenICam::RuntimeException
// when the text is not XML.
GENAPI_DECL std::vector<SSchemaViolation> checkDescriptionLinks(const std::string& xml);

}  // namespace GenApiEngine

#endif
