#include "reports/pdfdocument.h"

void writePdf(QIODevice &, const QString &, PdfFlow, const QString &) {}
