// The command line of camera-parameters: device, output form, command and its arguments.
#ifndef TOOLS_CAMERAPARAMETERS_TOOLOPTIONS_H
#define TOOLS_CAMERAPARAMETERS_TOOLOPTIONS_H

#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

class CToolOptions {
public:
    // Parses the arguments after the program name; errorText() says what is wrong when valid() is false.
    explicit CToolOptions(const QStringList& arguments);

    bool valid() const { return m_Error.isEmpty(); }
    const QString& errorText() const { return m_Error; }
    static QString usage();
    // The manual page (roff), made from the same table as usage().
    static QString manPage();

    QString device = "sim";
    bool json = false;
    bool allNodes = false;
    bool help = false;
    bool man = false;  // --man: print the manual page
    bool verify = false;
    bool allowEmpty = false;      // save: an empty feature stream is no failure
    QString visibility = "Guru";  // the most expert visibility listed
    QString filter;
    double seconds = 3.0;
    int frames = 10;  // chunks: frames to print
    QString command = "list";
    QStringList arguments;
    // The writes of set, in order: NAME=VALUE pairs, or the one NAME VALUE pair.
    QList<QPair<QString, QString>> settings() const;

private:
    bool takeOption(const QStringList& all, int& index);
    void checkArguments();

    QString m_Error;
};

#endif
