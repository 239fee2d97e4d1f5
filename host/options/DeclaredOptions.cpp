#include "DeclaredOptions.h"

QString helpText(const QCommandLineParser &parser)
{
    return parser.helpText() +
           QStringLiteral(
               "\nA drive:\n"
               "  record FILE.pcap            Write what games send into a pcap file, until "
               "Ctrl+C.\n"
               "  --telemetry FILE.pcap       Play it, or another pcap or pcapng file.\n"
               "\nThe collection of dashboards:\n"
               "  profiles list [--json]      Names, ids, kinds, vehicles, previews.\n"
               "  profiles activate NAME|ID   Make it the one that is shown.\n"
               "  profiles copy NAME|ID NEW   Copy it into your own folder.\n"
               "  profiles rename NAME|ID NEW Give one of your own another name.\n"
               "  profiles remove NAME|ID     Delete one of your own.\n"
               "  profiles vehicles           Which vehicle goes with which.\n"
               "  preview NAME|ID|FILE        Draw a dashboard's preview.png.\n"
               "  lint NAME|ID|FILE           Look for what is wrong with a dashboard.\n"
               "  vehicle NAME                Report a vehicle; prints what is on then.\n");
}
