// Each program's manual page tells what its --help tells, as a page man reads without a warning.
#include "ProcessRun.h"
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

// The terms of the help's tables: the text of each entry line up to the column of its description.
QStringList helpTerms(const QString& help) {
    QStringList terms;
    static const QRegularExpression entry("^  (\\S.*?)(?:\\s{2,}\\S.*)?$");
    for (const QString& line : help.split('\n')) {
        const QRegularExpressionMatch match = entry.match(line);
        if (match.hasMatch() && !line.startsWith("   "))
            terms.append(match.captured(1).trimmed());
    }
    return terms;
}

}  // namespace

TEST(ManualPages, EachProgramsPageTellsWhatItsHelpTells) {
    for (const QString& program : {QString(CAMERA_PARAMETERS_TOOL), QString(PARAMETER_NAMES_TOOL),
                                   QString(CAMERA_PARAMETERS_VIEWER)}) {
        SCOPED_TRACE(program.toStdString());
        const SRun help = runProgram(program, {"--help"});
        const SRun man = runProgram(program, {"--man"});
        ASSERT_EQ(help.exitCode, 0);
        ASSERT_EQ(man.exitCode, 0);
        const QStringList terms = helpTerms(help.out);
        EXPECT_GE(terms.size(), 3) << help.out.toStdString();
        QString page = man.out;
        page.replace("\\-", "-").replace("\\e", "\\");
        EXPECT_TRUE(page.startsWith(".TH ")) << man.out.left(200).toStdString();
        for (const QString& term : terms)
            EXPECT_TRUE(page.contains(".B " + term + "\n")) << term.toStdString();

        if (QStandardPaths::findExecutable("groff").isEmpty())
            continue;
        QTemporaryDir folder;
        const QString file = folder.filePath("page.1");
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(man.out.toUtf8());
        out.close();
        const SRun rendered = runProgram("groff", {"-man", "-Tutf8", "-ww", "-z", file});
        EXPECT_EQ(rendered.exitCode, 0);
        EXPECT_TRUE(rendered.err.isEmpty()) << rendered.err.toStdString();
    }
}
