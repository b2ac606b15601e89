#pragma once

#include <QString>
#include <chrono>

/// The web server that holds the version files.
struct VersionServer
{
    QString host; ///< name or address; empty: none can be contacted
    quint16 port = 443;
};

/// The times of the version check.
struct VersionPeriods
{
    std::chrono::milliseconds delay{1000};   ///< before each of the two requests
    std::chrono::milliseconds lookUp{50};    ///< between two looks whether the server's name has been found
    std::chrono::milliseconds address{5000}; ///< to an encrypted connection, if there is another address, and
                                             ///< this one is not tried again
    std::chrono::milliseconds head{10000};   ///< from the request to the whole head of the answer
    std::chrono::milliseconds transfer{30000}; ///< of silence behind the head, or of looking up the name
    std::chrono::milliseconds whole{60000};    ///< from the request to the end of the answer
};
