<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>CodeEditor</name>
    <message>
        <source>The file &apos;%1&apos; does not exist.</source>
        <translation>Die Datei „%1“ gibt es nicht.</translation>
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
        <translation>&lt;strong&gt;HINWEIS:&lt;/strong&gt; Die Regler oben gelten nur für die Vorschau. mph (Meilen) statt km/h beim Fahren lassen sich in den %1 unter „Einheiten“ wählen.</translation>
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
        <translation>Nicht ohne Hardwarebeschleunigung</translation>
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
    <name>Dialog</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>Ausblenden</translation>
    </message>
</context>
<context>
    <name>DocumentErrors</name>
    <message>
        <source>This window can&apos;t be shown</source>
        <translation>Dieses Fenster kann nicht angezeigt werden</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
</context>
<context>
    <name>DocumentMessages</name>
    <message>
        <source>Dashboard message: %1</source>
        <translation>Meldung des Dashboards: %1</translation>
    </message>
    <message>
        <source>Show all messages from this dashboard</source>
        <translation>Alle Meldungen dieses Dashboards zeigen</translation>
    </message>
</context>
<context>
    <name>FileDialog</name>
    <message>
        <source>Up</source>
        <translation>Nach oben</translation>
    </message>
    <message>
        <source>Parent folder (Backspace)</source>
        <translation>In den übergeordneten Ordner (Rücktaste)</translation>
    </message>
    <message>
        <source>Path</source>
        <translation>Pfad</translation>
    </message>
    <message>
        <source>No matching files here</source>
        <translation>Keine passenden Dateien</translation>
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
        <translation>Benutzerordner</translation>
    </message>
    <message>
        <source>The file “%1” does not exist.</source>
        <translation>Die Datei „%1“ gibt es nicht.</translation>
    </message>
</context>
<context>
    <name>Gallery</name>
    <message>
        <source>%1 copy</source>
        <translation>%1 Kopie</translation>
    </message>
    <message>
        <source>New dashboard</source>
        <translation>Neues Dashboard</translation>
    </message>
    <message>
        <source>That didn&apos;t work</source>
        <translation>Das hat nicht geklappt</translation>
    </message>
    <message>
        <source>This is a built-in dashboard. Make a copy to change it.</source>
        <translation>Dieses Dashboard ist mitgeliefert. Eine Kopie davon lässt sich ändern.</translation>
    </message>
    <message>
        <source>Not now</source>
        <translation>Gerade nicht</translation>
    </message>
    <message>
        <source>“%1” can&apos;t be renamed</source>
        <translation>„%1“ lässt sich nicht umbenennen</translation>
    </message>
    <message>
        <source>“%1” can&apos;t be removed</source>
        <translation>„%1“ lässt sich nicht entfernen</translation>
    </message>
</context>
<context>
    <name>GalleryHeader</name>
    <message>
        <source>Live picture of %1. Opens the dashboard window.</source>
        <translation>Live-Bild von %1. Öffnet das Fenster des Dashboards.</translation>
    </message>
    <message>
        <source>No active dashboard</source>
        <translation>Kein aktives Dashboard</translation>
    </message>
    <message>
        <source>Open the dashboard window</source>
        <translation>Fenster des Dashboards öffnen</translation>
    </message>
    <message>
        <source>Active dashboard, live</source>
        <translation>Aktives Dashboard, live</translation>
    </message>
    <message>
        <source>Active dashboard</source>
        <translation>Aktives Dashboard</translation>
    </message>
    <message>
        <source>Choose a dashboard below</source>
        <translation>Unten ein Dashboard auswählen</translation>
    </message>
    <message>
        <source>Built-in</source>
        <translation>Mitgeliefert</translation>
    </message>
    <message>
        <source>Yours</source>
        <translation>Eigenes</translation>
    </message>
    <message>
        <source>no vehicles assigned yet</source>
        <translation>noch keinem Fahrzeug zugeordnet</translation>
    </message>
    <message>
        <source>Open window</source>
        <translation>Fenster öffnen</translation>
    </message>
    <message>
        <source>Show the dashboard in its own window</source>
        <translation>Das Dashboard in einem eigenen Fenster zeigen</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Edit a copy of this dashboard</source>
        <translation>Eine Kopie dieses Dashboards bearbeiten</translation>
    </message>
    <message>
        <source>Open this dashboard in the editor</source>
        <translation>Dieses Dashboard im Editor öffnen</translation>
    </message>
    <message>
        <source>Vehicles</source>
        <translation>Fahrzeuge</translation>
    </message>
    <message>
        <source>Show the vehicles assigned to this dashboard</source>
        <translation>Die Fahrzeuge zeigen, denen dieses Dashboard zugeordnet ist</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Settings (Ctrl+,)</source>
        <translation>Einstellungen (Strg+,)</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Help (F1)</source>
        <translation>Hilfe (F1)</translation>
    </message>
    <message numerus="yes">
        <source>%n vehicle(s) assigned</source>
        <translation>
            <numerusform>%n Fahrzeug zugeordnet</numerusform>
            <numerusform>%n Fahrzeugen zugeordnet</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>GalleryStatusBar</name>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>No vehicle yet</source>
        <translation>Noch kein Fahrzeug</translation>
    </message>
    <message>
        <source>Vehicle: %1</source>
        <translation>Fahrzeug: %1</translation>
    </message>
    <message>
        <source>Dashboard: %1</source>
        <translation>Dashboard: %1</translation>
    </message>
</context>
<context>
    <name>GalleryToolBar</name>
    <message>
        <source>Dashboards</source>
        <translation>Dashboards</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Search names and vehicles</source>
        <translation>Namen, Fahrzeuge suchen</translation>
    </message>
    <message>
        <source>Ctrl+F; Escape clears</source>
        <translation>Strg+F; Esc leert das Feld</translation>
    </message>
    <message>
        <source>New from template</source>
        <translation>Neu aus Vorlage</translation>
    </message>
    <message>
        <source>Create your own dashboard from the template (Ctrl+N)</source>
        <translation>Aus der Vorlage ein eigenes Dashboard machen (Strg+N)</translation>
    </message>
</context>
<context>
    <name>HelpPage</name>
    <message>
        <source>There is no help on this topic.</source>
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
        <source>Find on this page</source>
        <translation>Auf der Seite suchen</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>en</source>
        <extracomment>The language of the help&apos;s pages, as their files are named: dashboards.de.md</extracomment>
        <translation>de</translation>
    </message>
</context>
<context>
    <name>HostSettings</name>
    <message>
        <source>Settings can&apos;t be saved to &apos;%1&apos;; changes last until the program ends.</source>
        <translation>Die Einstellungen lassen sich nicht in „%1“ speichern; Änderungen gelten bis zum Programmende.</translation>
    </message>
    <message>
        <source>The settings file was damaged. It is kept as &apos;%1&apos;.</source>
        <translation>Die Einstellungsdatei war beschädigt. Sie liegt jetzt unter „%1“.</translation>
    </message>
    <message>
        <source>The saved units are unknown; km/h is used.</source>
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
        <source>The saved telemetry source is unknown; the demo is used.</source>
        <translation>Die gespeicherte Telemetriequelle ist unbekannt; die Demo wird verwendet.</translation>
    </message>
    <message>
        <source>The saved language is unknown; the system&apos;s is used.</source>
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
    <name>MessageDialog</name>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>MessageWindow</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>NameDialog</name>
    <message>
        <source>This dashboard no longer exists.</source>
        <translation>Dieses Dashboard gibt es nicht mehr.</translation>
    </message>
    <message>
        <source>Rename “%1”</source>
        <translation>„%1“ umbenennen</translation>
    </message>
    <message>
        <source>Name your copy</source>
        <translation>Name der Kopie</translation>
    </message>
    <message>
        <source>Copy “%1”</source>
        <translation>„%1“ kopieren</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message>
        <source>Create and edit</source>
        <translation>Anlegen und bearbeiten</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Your own dashboard, created from the template.</source>
        <translation>Ein neues, eigenes Dashboard nach der Vorlage.</translation>
    </message>
    <message>
        <source>Built-in dashboards can&apos;t be changed. Your changes go into a copy.</source>
        <translation>Mitgelieferte Dashboards lassen sich nicht ändern. Ihre Änderungen kommen in eine Kopie.</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Name of the dashboard</source>
        <translation>Name des Dashboards</translation>
    </message>
    <message>
        <source>New dashboard from template</source>
        <translation>Neues Dashboard aus der Vorlage</translation>
    </message>
</context>
<context>
    <name>Navigation</name>
    <message>
        <source>There is no window named &apos;%1&apos;.</source>
        <translation>Es gibt kein Fenster namens „%1“.</translation>
    </message>
</context>
<context>
    <name>ProfileActions</name>
    <message>
        <source>Copying to “%1”…</source>
        <translation>Wird nach „%1“ kopiert …</translation>
    </message>
    <message>
        <source>Renaming to “%1”…</source>
        <translation>Wird in „%1“ umbenannt …</translation>
    </message>
    <message>
        <source>Removing “%1”…</source>
        <translation>„%1“ wird entfernt …</translation>
    </message>
    <message>
        <source>Enter a name.</source>
        <translation>Bitte einen Namen eingeben.</translation>
    </message>
    <message>
        <source>This is already its name.</source>
        <translation>So heißt es schon.</translation>
    </message>
    <message>
        <source>A dashboard with this name already exists.</source>
        <translation>Ein Dashboard mit diesem Namen gibt es schon.</translation>
    </message>
</context>
<context>
    <name>ProfileCard</name>
    <message>
        <source>Built-in</source>
        <translation>Mitgeliefert</translation>
    </message>
    <message>
        <source>Yours</source>
        <translation>Eigenes</translation>
    </message>
    <message>
        <source>%1, active, %2, %3</source>
        <translation>%1, aktiv, %2, %3</translation>
    </message>
    <message>
        <source>%1, %2, %3</source>
        <translation>%1, %2, %3</translation>
    </message>
    <message>
        <source>No preview</source>
        <translation>Keine Vorschau</translation>
    </message>
    <message>
        <source>Active</source>
        <translation>Aktiv</translation>
    </message>
    <message>
        <source>Actions for %1</source>
        <translation>Aktionen für %1</translation>
    </message>
    <message>
        <source>no vehicles</source>
        <translation>kein Fahrzeug</translation>
    </message>
    <message numerus="yes">
        <source>%n vehicle(s)</source>
        <translation>
            <numerusform>%n Fahrzeug</numerusform>
            <numerusform>%n Fahrzeuge</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ProfileGrid</name>
    <message>
        <source>Dashboards</source>
        <translation>Dashboards</translation>
    </message>
    <message>
        <source>Nothing matches “%1”</source>
        <translation>Nichts passt zu „%1“</translation>
    </message>
    <message>
        <source>There are no dashboards yet</source>
        <translation>Es gibt noch keine Dashboards</translation>
    </message>
    <message>
        <source>The search covers the names of dashboards and vehicles. Press Escape in the search field to show all.</source>
        <translation>Gesucht wird in den Namen von Dashboards und Fahrzeugen. Esc im Suchfeld zeigt wieder alle.</translation>
    </message>
    <message>
        <source>Create one with “New from template”, or put a dashboard&apos;s folder into Orvalentix/Halvorin/Dashboards in your documents and restart the program.</source>
        <translation>Legen Sie mit „Neu aus Vorlage“ ein eigenes an, oder legen Sie den Ordner eines Dashboards in Ihren Dokumenten unter Orvalentix/Halvorin/Dashboards ab und starten Sie das Programm neu.</translation>
    </message>
    <message>
        <source>Put a dashboard&apos;s folder into Orvalentix/Halvorin/Dashboards in your documents and restart the program.</source>
        <translation>Legen Sie den Ordner eines Dashboards in Ihren Dokumenten unter Orvalentix/Halvorin/Dashboards ab und starten Sie das Programm neu.</translation>
    </message>
</context>
<context>
    <name>ProfileMenu</name>
    <message>
        <source>Activate</source>
        <translation>Aktivieren</translation>
    </message>
    <message>
        <source>Enter</source>
        <translation>Eingabe</translation>
    </message>
    <message>
        <source>Already active.</source>
        <translation>Schon aktiv.</translation>
    </message>
    <message>
        <source>Edit a copy…</source>
        <translation>Kopie bearbeiten …</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Ctrl+E</source>
        <translation>Strg+E</translation>
    </message>
    <message>
        <source>Copy…</source>
        <translation>Kopieren …</translation>
    </message>
    <message>
        <source>Ctrl+D</source>
        <translation>Strg+D</translation>
    </message>
    <message>
        <source>Vehicles…</source>
        <translation>Fahrzeuge …</translation>
    </message>
    <message>
        <source>Rename…</source>
        <translation>Umbenennen …</translation>
    </message>
    <message>
        <source>F2</source>
        <translation>F2</translation>
    </message>
    <message>
        <source>Remove…</source>
        <translation>Entfernen …</translation>
    </message>
    <message>
        <source>Del</source>
        <translation>Entf</translation>
    </message>
</context>
<context>
    <name>RemoveDialog</name>
    <message>
        <source>Remove “%1”?</source>
        <translation>„%1“ entfernen?</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>This deletes its folder and everything in it, which can&apos;t be undone:</source>
        <translation>Sein Ordner wird mit allem darin gelöscht. Das lässt sich nicht rückgängig machen:</translation>
    </message>
    <message>
        <source>Vehicles that will have no dashboard: %1</source>
        <translation>Fahrzeuge, die dann keinem Dashboard zugeordnet sind: %1</translation>
    </message>
    <message>
        <source>This is the active dashboard; another one becomes active.</source>
        <translation>Es ist das aktive Dashboard; ein anderes tritt an seine Stelle.</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>und %n weiteres</numerusform>
            <numerusform>und %n weitere</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
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
        <source>Telemetry source</source>
        <translation>Telemetriequelle</translation>
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
        <source>System default</source>
        <translation>Systemstandard</translation>
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
        <source>Last used</source>
        <translation>Zuletzt verwendet</translation>
    </message>
    <message>
        <source>%1 (no longer exists)</source>
        <translation>%1 (nicht mehr da)</translation>
    </message>
</context>
<context>
    <name>TelemetrySources</name>
    <message>
        <source>Demo race</source>
        <translation>Demorennen</translation>
    </message>
    <message>
        <source>Any game that sends</source>
        <translation>Jedes Spiel, das sendet</translation>
    </message>
</context>
<context>
    <name>TelemetryStatus</name>
    <message>
        <source>Live, %1 Hz</source>
        <translation>Live, %1 Hz</translation>
    </message>
    <message>
        <source>Live</source>
        <translation>Live</translation>
    </message>
    <message>
        <source>Paused</source>
        <translation>Pausiert</translation>
    </message>
    <message>
        <source>Lost</source>
        <translation>Verloren</translation>
    </message>
    <message>
        <source>Could not be opened</source>
        <translation>Nicht zu öffnen</translation>
    </message>
    <message>
        <source>Waiting for data</source>
        <translation>Warten auf Daten</translation>
    </message>
</context>
<context>
    <name>VehiclesDialog</name>
    <message>
        <source>Vehicles of “%1”</source>
        <translation>Fahrzeuge von „%1“</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>When you drive one of these, this dashboard is activated.</source>
        <translation>Wenn Sie eines davon fahren, wird dieses Dashboard aktiviert.</translation>
    </message>
    <message>
        <source>No vehicles are assigned yet. A vehicle is assigned to the dashboard that is active when you first drive it, or that you activate while driving it.</source>
        <translation>Es ist noch keinem Fahrzeug zugeordnet. Ein Fahrzeug kommt zu dem Dashboard, das bei seiner ersten Fahrt aktiv ist oder das Sie während der Fahrt aktivieren.</translation>
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
