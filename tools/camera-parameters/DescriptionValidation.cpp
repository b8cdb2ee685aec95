// Schema violations with their lines, pointers to missing nodes and broken formulas with theirs, then a
// load through the engine for what neither can see.
#include "DescriptionValidation.h"
#include <GenApi/GenApi.h>
#include <GenApiEngine/DescriptionSchema.h>
#include "ParameterPrinter.h"
#include <QFile>
#include <QJsonArray>

namespace {

// Loading refuses descriptions GenApi refuses, such as one whose nodes read each other in a circle.
QString loadRefusal(const QByteArray& xml) {
    try {
        GenApi::CNodeMapRef map;
        map._LoadXMLFromString(GenICam::gcstring(xml.constData(), static_cast<size_t>(xml.size())));
        return QString();
    } catch (const GenICam::GenericException& e) {
        return QString::fromUtf8(e.GetDescription());
    }
}

void printJson(const QString& path, const std::vector<GenApiEngine::SSchemaViolation>& problems,
               const QString& refusal, QTextStream& out) {
    QJsonArray list;
    for (const GenApiEngine::SSchemaViolation& problem : problems)
        list.append(
            QJsonObject{{"line", problem.line}, {"message", QString::fromStdString(problem.message)}});
    if (!refusal.isEmpty())
        list.append(QJsonObject{{"line", 0}, {"message", refusal}});
    CParameterPrinter(out, true).printObject({{"file", path}, {"valid", list.isEmpty()}, {"problems", list}});
}

}  // namespace

int validateDescriptionFile(const QString& path, QTextStream& out, QTextStream& err, bool json) {
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
    const QString refusal = loadRefusal(xml);
    const bool valid = violations.empty() && links.empty() && refusal.isEmpty();
    if (json) {
        std::vector<GenApiEngine::SSchemaViolation> problems = violations;
        problems.insert(problems.end(), links.begin(), links.end());
        printJson(path, problems, refusal, out);
        return valid ? 0 : 1;
    }
    for (const auto* found : {&violations, &links}) {
        for (const GenApiEngine::SSchemaViolation& violation : *found)
            out << path << ":" << violation.line << ": " << QString::fromStdString(violation.message) << "\n";
    }
    if (!refusal.isEmpty())
        out << path << ": " << refusal << "\n";
    if (valid) {
        out << path << " validates\n";
        return 0;
    }
    out << path << ": " << violations.size() << " schema violation(s), " << links.size()
        << " missing node(s) or formula error(s)" << (refusal.isEmpty() ? "" : ", refused by the loader")
        << "\n";
    return 1;
}
