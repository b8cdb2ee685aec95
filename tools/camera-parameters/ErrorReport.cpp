// One message a line, in the order the command wrote them.
#include "ErrorReport.h"
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

CErrorReport::CErrorReport(QTextStream& err, bool json) : m_Err(err), m_Json(json), m_Buffer(&m_Text) {}

int CErrorReport::finish(int exitCode) {
    if (!m_Json) {
        m_Err.flush();
        return exitCode;
    }
    m_Buffer.flush();
    if (exitCode == 0 && m_Text.isEmpty())
        return exitCode;
    QJsonArray errors;
    for (const QString& line : m_Text.split('\n', Qt::SkipEmptyParts))
        errors.append(line);
    m_Err << QJsonDocument(QJsonObject{{"exitCode", exitCode}, {"errors", errors}})
                 .toJson(QJsonDocument::Compact)
          << "\n";
    m_Err.flush();
    m_Text.clear();
    return exitCode;
}
