<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>CodeEditor</name>
    <message>
        <source>There is no file &apos;%1&apos; to edit.</source>
        <translation>Es gibt keine Datei „%1“ zum Bearbeiten.</translation>
    </message>
    <message>
        <source>No editor could be started. Install Visual Studio Code, or set the environment variable VISUAL to the command of your editor.</source>
        <translation>Es konnte kein Editor gestartet werden. Visual Studio Code installieren oder die Umgebungsvariable VISUAL auf den Befehl eines Editors setzen.</translation>
    </message>
</context>
<context>
    <name>DashboardEditor</name>
    <message>
        <source>Dashboard Editor</source>
        <translation>Dashboard-Editor</translation>
    </message>
    <message>
        <source>Path to dashboard file:</source>
        <translation>Pfad der Dashboard-Datei:</translation>
    </message>
    <message>
        <source>Select main dashboard QML file</source>
        <translation>QML-Hauptdatei des Dashboards auswählen</translation>
    </message>
    <message>
        <source>Main QML file (*.qml)</source>
        <translation>QML-Hauptdatei (*.qml)</translation>
    </message>
    <message>
        <source>Code</source>
        <translation>Code</translation>
    </message>
    <message>
        <source>Below preview is automatically refreshed if the dashboard file is changed in external editor.</source>
        <translation>Die Vorschau unten wird aktualisiert, sobald die Dashboard-Datei in einem anderen Editor geändert wird.</translation>
    </message>
    <message>
        <source>Steering rotation:</source>
        <translation>Lenkeinschlag:</translation>
    </message>
    <message>
        <source>Gas pedal:</source>
        <translation>Gaspedal:</translation>
    </message>
    <message>
        <source>Brake pedal:</source>
        <translation>Bremspedal:</translation>
    </message>
    <message>
        <source>Clutch pedal:</source>
        <translation>Kupplungspedal:</translation>
    </message>
    <message>
        <source>RPM:</source>
        <translation>Drehzahl:</translation>
    </message>
    <message>
        <source>Max RPM:</source>
        <translation>Höchstdrehzahl:</translation>
    </message>
    <message>
        <source>Show debug markers</source>
        <translation>Hilfsmarkierungen zeigen</translation>
    </message>
    <message>
        <source>Show system panel</source>
        <translation>Systemanzeige zeigen</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Use mph instead of km/h</source>
        <translation>mph statt km/h</translation>
    </message>
    <message>
        <source>Session flag - yellow</source>
        <translation>Flagge – gelb</translation>
    </message>
    <message>
        <source>Session flag - blue</source>
        <translation>Flagge – blau</translation>
    </message>
    <message>
        <source>Session flag - black</source>
        <translation>Flagge – schwarz</translation>
    </message>
    <message>
        <source>Session flag - black/white</source>
        <translation>Flagge – schwarz-weiß</translation>
    </message>
    <message>
        <source>DRS Available</source>
        <translation>DRS verfügbar</translation>
    </message>
    <message>
        <source>&lt;strong&gt;NOTE:&lt;/strong&gt; Above controls are only for preview purpose. If you wish to use mph (miles) instead of km/h during gameplay, change units in %1.</source>
        <translation>&lt;strong&gt;HINWEIS:&lt;/strong&gt; Die Regler oben gelten nur für die Vorschau. Ob beim Fahren mph (Meilen) statt km/h angezeigt werden, legen die Einheiten in %1 fest.</translation>
    </message>
</context>
<context>
    <name>DashboardEditorVM</name>
    <message>
        <source>Dashboard requires hardware acceleration</source>
        <translation>Das Dashboard braucht Hardwarebeschleunigung</translation>
    </message>
    <message>
        <source>Not available without hardware acceleration</source>
        <translation>Ohne Hardwarebeschleunigung nicht verfügbar</translation>
    </message>
</context>
<context>
    <name>DashboardEngine</name>
    <message>
        <source>Waiting for game data</source>
        <translation>Warten auf Daten vom Spiel</translation>
    </message>
    <message>
        <source>Dashboard requires hardware acceleration</source>
        <translation>Das Dashboard braucht Hardwarebeschleunigung</translation>
    </message>
</context>
<context>
    <name>DashboardProfilesManager</name>
    <message>
        <source>Unsupported action: %1</source>
        <translation>Unbekannte Aktion: %1</translation>
    </message>
    <message>
        <source>Profile not found</source>
        <translation>Profil nicht gefunden</translation>
    </message>
    <message>
        <source>Name cannot be empty</source>
        <translation>Der Name darf nicht leer sein</translation>
    </message>
    <message>
        <source>Name is not correct</source>
        <translation>Der Name ist nicht zulässig</translation>
    </message>
    <message>
        <source>Dashboard with given name already exists</source>
        <translation>Ein Dashboard mit diesem Namen gibt es bereits</translation>
    </message>
    <message>
        <source>Failed to create &apos;%1&apos;</source>
        <translation>„%1“ konnte nicht angelegt werden</translation>
    </message>
    <message>
        <source>Dashboard does not exist</source>
        <translation>Das Dashboard gibt es nicht</translation>
    </message>
    <message>
        <source>Failed to copy &apos;%1&apos; to &apos;%2&apos;</source>
        <translation>„%1“ konnte nicht nach „%2“ kopiert werden</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a valid dashboard</source>
        <translation>„%1“ ist kein gültiges Dashboard</translation>
    </message>
    <message>
        <source>Built-in profile cannot be renamed</source>
        <translation>Ein mitgeliefertes Profil kann nicht umbenannt werden</translation>
    </message>
    <message>
        <source>Failed to rename &apos;%1&apos; to &apos;%2&apos;</source>
        <translation>„%1“ konnte nicht in „%2“ umbenannt werden</translation>
    </message>
    <message>
        <source>Built-in profile cannot be removed</source>
        <translation>Ein mitgeliefertes Profil kann nicht entfernt werden</translation>
    </message>
    <message>
        <source>Failed to remove &apos;%1&apos;</source>
        <translation>„%1“ konnte nicht entfernt werden</translation>
    </message>
</context>
<context>
    <name>DashboardSysPanel</name>
    <message>
        <source>Category: %1</source>
        <translation>Kategorie: %1</translation>
    </message>
    <message>
        <source>Profile:</source>
        <translation>Profil:</translation>
    </message>
</context>
<context>
    <name>DashboardWindow</name>
    <message>
        <source>Double click to switch to/from fullscreen</source>
        <translation>Doppelklick: Vollbild ein/aus</translation>
    </message>
    <message>
        <source>Toggle stay on top</source>
        <translation>Immer im Vordergrund ein/aus</translation>
    </message>
    <message>
        <source>Close this window</source>
        <translation>Dieses Fenster schließen</translation>
    </message>
    <message>
        <source>Dashboard</source>
        <translation>Dashboard</translation>
    </message>
</context>
<context>
    <name>FileDialog</name>
    <message>
        <source>Up</source>
        <translation>Nach oben</translation>
    </message>
    <message>
        <source>Go to the folder above (Backspace)</source>
        <translation>In den übergeordneten Ordner (Rücktaste)</translation>
    </message>
    <message>
        <source>Path</source>
        <translation>Pfad</translation>
    </message>
    <message>
        <source>Nothing to choose here</source>
        <translation>Hier gibt es nichts auszuwählen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>My dashboards</source>
        <translation>Meine Dashboards</translation>
    </message>
    <message>
        <source>Documents</source>
        <translation>Dokumente</translation>
    </message>
    <message>
        <source>Home</source>
        <translation>Persönlicher Ordner</translation>
    </message>
</context>
<context>
    <name>HelpPage</name>
    <message>
        <source>There is no help about this.</source>
        <translation>Dazu gibt es keine Hilfe.</translation>
    </message>
</context>
<context>
    <name>HelpWindow</name>
    <message>
        <source>Find (Ctrl+F)</source>
        <translation>Suchen (Strg+F)</translation>
    </message>
    <message>
        <source>Find in the page</source>
        <translation>Auf der Seite suchen</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
</context>
<context>
    <name>HostSettings</name>
    <message>
        <source>Settings can&apos;t be saved in &apos;%1&apos;; they hold until the program ends.</source>
        <translation>Die Einstellungen lassen sich nicht in „%1“ speichern; sie gelten bis zum Programmende.</translation>
    </message>
    <message>
        <source>The settings file was damaged. It is kept as &apos;%1&apos;.</source>
        <translation>Die Einstellungsdatei war beschädigt. Sie liegt jetzt unter „%1“.</translation>
    </message>
    <message>
        <source>The saved units are not known; km/h holds.</source>
        <translation>Die gespeicherten Einheiten sind unbekannt; es gilt km/h.</translation>
    </message>
    <message>
        <source>The saved start-up dashboard can&apos;t be read; the one used last is shown.</source>
        <translation>Das gespeicherte Start-Dashboard ist nicht lesbar; gezeigt wird das zuletzt verwendete.</translation>
    </message>
    <message>
        <source>The start-up dashboard &apos;%1&apos; no longer exists; the one used last is shown.</source>
        <translation>Das Start-Dashboard „%1“ gibt es nicht mehr; gezeigt wird das zuletzt verwendete.</translation>
    </message>
    <message>
        <source>The saved source of telemetry is not known; the demo is used.</source>
        <translation>Die gespeicherte Telemetriequelle ist unbekannt; die Demo wird verwendet.</translation>
    </message>
    <message>
        <source>The saved language is not known; the system&apos;s is used.</source>
        <translation>Die gespeicherte Sprache ist unbekannt; es gilt die des Systems.</translation>
    </message>
</context>
<context>
    <name>ICU</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
</context>
<context>
    <name>SettingsWindow</name>
    <message>
        <source>Units</source>
        <translation>Einheiten</translation>
    </message>
    <message>
        <source>Kilometres per hour (km/h)</source>
        <translation>Kilometer pro Stunde (km/h)</translation>
    </message>
    <message>
        <source>Miles per hour (mph)</source>
        <translation>Meilen pro Stunde (mph)</translation>
    </message>
    <message>
        <source>Telemetry from</source>
        <translation>Telemetrie von</translation>
    </message>
    <message>
        <source>Dashboard at start-up</source>
        <translation>Dashboard beim Start</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Sprache</translation>
    </message>
    <message>
        <source>As the system</source>
        <translation>Wie das System</translation>
    </message>
    <message>
        <source>Applies after a restart</source>
        <translation>Gilt nach einem Neustart</translation>
    </message>
    <message>
        <source>Restart now</source>
        <translation>Jetzt neu starten</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>The one used last</source>
        <translation>Das zuletzt verwendete</translation>
    </message>
    <message>
        <source>%1 (no longer there)</source>
        <translation>%1 (nicht mehr da)</translation>
    </message>
</context>
<context>
    <name>Window</name>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Open the guide (F1)</source>
        <translation>Anleitung öffnen (F1)</translation>
    </message>
</context>
</TS>
