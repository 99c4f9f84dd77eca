// The demo host: starts the editor's application object the way the editor does and shows
// what it worked out.

#include <OVApplication.h>

#include <QDateTime>
#include <QTextStream>

int main(int argc, char** argv)
{
    OVApplication app(argc, argv);
    QTextStream out(stdout);

    out << "Data folder:      " << OVApplication::GetDataFolder() << '\n';
    out << "User data folder: " << OVApplication::GetUserDataFolder() << '\n';
    out << "Resource folder:  " << OVApplication::GetResourcePath() << '\n';

    // A settings round trip through "user.ini".
    const QString stamp = QDateTime::currentDateTime().toString(Qt::ISODate);
    OVApplication::SetUserValue(QStringLiteral("Demo/LastRun"), stamp);
    out << "Settings round trip: wrote " << stamp << ", read "
        << OVApplication::GetUserValue(QStringLiteral("Demo/LastRun")).toString() << " (user.ini version "
        << OVApplication::GetUserValue(OVApplication::Version).toString() << ")\n";
    return 0;
}
