// The validate command: a camera description checked against its schema and loaded as GenApi loads it.
#ifndef TOOLS_CAMERAPARAMETERS_DESCRIPTIONVALIDATION_H
#define TOOLS_CAMERAPARAMETERS_DESCRIPTIONVALIDATION_H

#include <QString>
#include <QTextStream>

// Prints every schema violation as "FILE:LINE: message" and whatever refuses the load (a read cycle);
// answers 0 for a valid description and 1 otherwise. With json, one object tells the same: the file, whether
// it is valid, and each problem with its line (0 for a refusal of the whole description).
int validateDescriptionFile(const QString& path, QTextStream& out, QTextStream& err, bool json = false);

#endif
