#pragma once

#include <QString>
#include <QVariant>

struct GroupCommand;

/// A change request as text, with all its fields; "no request" for any other variant.
QString requestText(const QVariant &request);

QString groupText(const GroupCommand &command);
