// Schema violations with their lines, pointers to missing nodes and broken formulas with theirs, then a
// load through the engine for what neither can see.
#include "DescriptionValidation.h"
#include <GenApi/GenApi.h>
#include <GenApiEngine/DescriptionSchema.h>
#include <QFile>

namespace {

// Loading refuses descriptions GenApi refuses, such as one whose nodes read each other in a circle.
bool loadsAsGenApiLoads(const QByteArray& xml, const QString& path, QTextStream& out) {
    try {
        GenApi::CNodeMapRef map;
        map._LoadXMLFromString(GenICam::gcstring(xml.constData(), static_cast<size_t>(xml.size())));
        return true;
    } catch (const GenICam::GenericException& e) {
        out << path << ": " << e.GetDescription() << "\n";
        return false;
    }
}

}  // namespace

int validateDescriptionFile(const QString& path, QTextStream& out, QTextStream& err) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        err << "Cannot read '" << path << "': " << file.errorString() << "\n";
        return 1;
    }
    const QByteArray xml = file.readAll();
    std::vector<GenApiEngine::SSchemaViolation> violations;
    std::vector<GenApiEngine::SSchemaViolation> links;
    try {
        violations = GenApiEngine::validateDescription(xml.toStdString());
        links = GenApiEngine::checkDescriptionLinks(xml.toStdString());
    } catch (const GenICam::GenericException& e) {
        err << path << ": " << e.GetDescription() << "\n";
        return 1;
    }
    for (const auto* found : {&violations, &links}) {
        for (const GenApiEngine::SSchemaViolation& violation : *found)
            out << path << ":" << violation.line << ": " << QString::fromStdString(violation.message) << "\n";
    }
    const bool loads = loadsAsGenApiLoads(xml, path, out);
    if (violations.empty() && links.empty() && loads) {
        out << path << " validates\n";
        return 0;
    }
    out << path << ": " << violations.size() << " schema violation(s), " << links.size()
        << " missing node(s) or formula error(s)" << (loads ? "" : ", refused by the loader") << "\n";
    return 1;
}
