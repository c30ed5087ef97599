<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en_US">
<context>
    <name>PbaComboBox</name>
    <message>
        <source>PbaComboBox { text-decoration: underline;}</source>
        <translation>PbaComboBox { text-decoration: underline;}</translation>
    </message>
</context>
<context>
    <name>PbaMainWindow</name>
    <message>
        <source>Preboot authentication</source>
        <translation>Preboot-Authentifizierung</translation>
    </message>
    <message>
        <source>WARNING!
Verbose debug logging is enabled.
Your private information can be saved to log file.</source>
        <translation>WARNUNG!
Die ausführliche Debug-Protokollierung ist eingeschaltet.
Ihre persönlichen Daten können in die Protokolldatei gelangen.</translation>
    </message>
    <message>
        <source>To authenticate with a token or smart card, please connect it now.</source>
        <translation>Wenn Sie sich mit einem Token oder einer Smartcard anmelden möchten, schließen Sie diese jetzt an.</translation>
    </message>
    <message>
        <source>Domain</source>
        <translation>Domäne</translation>
    </message>
    <message>
        <source>Domain:</source>
        <translation>Domäne:</translation>
    </message>
    <message>
        <source>Change</source>
        <comment>Change domain</comment>
        <translation>Ändern</translation>
    </message>
    <message>
        <source>Login</source>
        <translation>Benutzername</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Kennwort</translation>
    </message>
    <message>
        <source>CONTINUE</source>
        <comment>Login</comment>
        <translation>WEITER</translation>
    </message>
    <message>
        <source>Forgot your password?</source>
        <translation>Kennwort vergessen?</translation>
    </message>
    <message>
        <source>Password change</source>
        <translation>Kennwort ändern</translation>
    </message>
    <message>
        <source>New password</source>
        <translation>Neues Kennwort</translation>
    </message>
    <message>
        <source>Confirm new password</source>
        <translation>Neues Kennwort bestätigen</translation>
    </message>
    <message>
        <source>CONTINUE</source>
        <comment>Change password</comment>
        <translation>WEITER</translation>
    </message>
    <message>
        <source>Start Windows without password change</source>
        <translation>Windows ohne Kennwortänderung starten</translation>
    </message>
    <message>
        <source>Password Reset. Step 1: Entropy</source>
        <translation>Kennwort zurücksetzen. Schritt 1: Zufallsdaten</translation>
    </message>
    <message>
        <source>Please press random keys several times or move mouse to increase entropy.</source>
        <translation>Drücken Sie mehrmals beliebige Tasten oder bewegen Sie die Maus, um Zufallsdaten zu sammeln.</translation>
    </message>
    <message>
        <source>Password Reset. Step 2: Challenge</source>
        <translation>Kennwort zurücksetzen. Schritt 2: Anfrage</translation>
    </message>
    <message>
        <source>Please tell the system administrator the name of your computer and the strings displayed on the screen:</source>
        <translation>Teilen Sie dem Systemadministrator den Namen Ihres Computers und die angezeigten Zeichenfolgen mit:</translation>
    </message>
    <message>
        <source>String 1:</source>
        <translation>Zeichenfolge 1:</translation>
    </message>
    <message>
        <source>String 2:</source>
        <translation>Zeichenfolge 2:</translation>
    </message>
    <message>
        <source>String 3:</source>
        <translation>Zeichenfolge 3:</translation>
    </message>
    <message>
        <source>CONTINUE</source>
        <comment>Challenge.</comment>
        <translation>WEITER</translation>
    </message>
    <message>
        <source>Password Reset. Step 3: Response</source>
        <translation>Kennwort zurücksetzen. Schritt 3: Antwort</translation>
    </message>
    <message>
        <source>Please enter the strings provided by the system administrator, then click &quot;CONTINUE&quot;:</source>
        <translation>Geben Sie die Zeichenfolgen ein, die Ihnen der Systemadministrator nennt, und klicken Sie dann auf „WEITER“:</translation>
    </message>
    <message>
        <source>Accepted</source>
        <translation>Akzeptiert</translation>
    </message>
    <message>
        <source>Rejected</source>
        <translation>Abgelehnt</translation>
    </message>
    <message>
        <source>Response accepted.</source>
        <translation>Die Antwort wurde akzeptiert.</translation>
    </message>
    <message>
        <source>CONTINUE</source>
        <comment>Response</comment>
        <translation>WEITER</translation>
    </message>
    <message>
        <source>Preparing for compatibility check of the hard drive and authentication agent.</source>
        <comment>Test boot</comment>
        <translation>Die Prüfung der Verträglichkeit von Festplatte und Authentifizierungsagent wird vorbereitet.</translation>
    </message>
    <message>
        <source>If the computer becomes unresponsive for more than 10 minutes, please restart it manually and notify your system administrator.</source>
        <comment>Test boot</comment>
        <translation>Falls der Computer länger als 10 Minuten nicht reagiert, starten Sie ihn von Hand neu und benachrichtigen Sie Ihren Systemadministrator.</translation>
    </message>
    <message>
        <source>Windows will soon restart. Press any key or click &quot;CONTINUE&quot; to restart now.</source>
        <comment>Test boot</comment>
        <translation>Windows wird in Kürze neu gestartet. Drücken Sie eine beliebige Taste oder klicken Sie auf „WEITER“, um es sofort neu zu starten.</translation>
    </message>
    <message>
        <source>CONTINUE</source>
        <comment>Test boot</comment>
        <translation>WEITER</translation>
    </message>
    <message>
        <source>Please connect your token or smart card</source>
        <translation>Bitte schließen Sie Ihr Token oder Ihre Smartcard an</translation>
    </message>
    <message>
        <source>Temporary password reset</source>
        <translation>Kennwort vorübergehend zurücksetzen</translation>
    </message>
    <message>
        <source>To authenticate using user name and password, please eject your smart card.</source>
        <translation>Wenn Sie sich mit Benutzername und Kennwort anmelden möchten, entfernen Sie Ihre Smartcard.</translation>
    </message>
    <message>
        <source>To authenticate using user name and password, please eject all smart cards.</source>
        <translation>Wenn Sie sich mit Benutzername und Kennwort anmelden möchten, entfernen Sie alle Smartcards.</translation>
    </message>
    <message>
        <source>Quillmark authentication agent is starting.</source>
        <translation>Der Quillmark-Authentifizierungsagent wird gestartet.</translation>
    </message>
    <message>
        <source>Starting Windows</source>
        <translation>Windows wird gestartet</translation>
    </message>
    <message>
        <source>No credentials for logon.</source>
        <translation>Keine Anmeldedaten vorhanden.</translation>
    </message>
    <message>
        <source>Credentials of all users were removed. No one can log on to this computer by credentials.
Please contact the system administrator.</source>
        <translation>Die Anmeldedaten aller Benutzer wurden entfernt. Niemand kann sich an diesem Computer mit Anmeldedaten anmelden.
Bitte wenden Sie sich an den Systemadministrator.</translation>
    </message>
    <message>
        <source>PBA Test mode</source>
        <translation>PBA-Testmodus</translation>
    </message>
    <message>
        <source>Use this mode to test keyboard and pointing devices.</source>
        <translation>In diesem Modus können Sie Tastatur und Zeigegeräte testen.</translation>
    </message>
    <message>
        <source>Type any characters here</source>
        <translation>Geben Sie hier beliebige Zeichen ein</translation>
    </message>
    <message>
        <source>START WINDOWS</source>
        <translation>WINDOWS STARTEN</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Restart</source>
        <translation>Neu beginnen</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
</context>
<context>
    <name>QGuiApplication</name>
    <message>
        <source>QT_LAYOUT_DIRECTION</source>
        <translation>LTR</translation>
    </message>
</context>
<context>
    <name>QLineEdit</name>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>Wieder&amp;herstellen</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>&amp;Ausschneiden</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Einfügen</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Alles auswählen</translation>
    </message>
</context>
<context>
    <name>QShortcut</name>
    <message>
        <source>Ctrl</source>
        <translation>Strg</translation>
    </message>
    <message>
        <source>Shift</source>
        <translation>Umschalt</translation>
    </message>
</context>
<context>
    <name>ResponseInput</name>
    <message>
        <source>String %0:</source>
        <translation>Zeichenfolge %0:</translation>
    </message>
</context>
<context>
    <name>pba::QtViewImpl</name>
    <message>
        <source>No help for this screen</source>
        <translation>Keine Hilfe zu dieser Seite</translation>
    </message>
    <message>
        <source>This screen does not have a special help message.</source>
        <translation>Zu dieser Seite gibt es keinen eigenen Hilfetext.</translation>
    </message>
    <message>
        <source>Preboot authentication help</source>
        <translation>Hilfe zur Preboot-Authentifizierung</translation>
    </message>
    <message>
        <source>Domain: %0</source>
        <translation>Domäne: %0</translation>
    </message>
    <message>
        <source>User name field is empty</source>
        <translation>Das Feld „Benutzername“ ist leer</translation>
    </message>
    <message>
        <source>User name field is empty. Please enter a user name.</source>
        <translation>Das Feld „Benutzername“ ist leer. Bitte geben Sie einen Benutzernamen ein.</translation>
    </message>
    <message>
        <source>Password field is empty</source>
        <translation>Das Feld „Kennwort“ ist leer</translation>
    </message>
    <message>
        <source>Password field is empty. Please enter a password.</source>
        <translation>Das Feld „Kennwort“ ist leer. Bitte geben Sie ein Kennwort ein.</translation>
    </message>
    <message>
        <source>CONTINUE</source>
        <translation>WEITER</translation>
    </message>
    <message>
        <source>Forgot your password?</source>
        <translation>Kennwort vergessen?</translation>
    </message>
    <message>
        <source>CANCEL</source>
        <translation>ABBRECHEN</translation>
    </message>
    <message>
        <source>Internal Error</source>
        <translation>Interner Fehler</translation>
    </message>
    <message>
        <source>Internal PBA error.

Function: %1
Line: %2
res: %3(%4)</source>
        <translation>Interner PBA-Fehler.

Funktion: %1
Zeile: %2
res: %3(%4)</translation>
    </message>
    <message>
        <source>WARNING!
Verbose debug logging is enabled.
Your private data can be saved to log file.</source>
        <translation>WARNUNG!
Die ausführliche Debug-Protokollierung ist eingeschaltet.
Ihre persönlichen Daten können in die Protokolldatei gelangen.</translation>
    </message>
    <message>
        <source>WARNING!
Debug logging is enabled.
Your private data can be saved to log file.</source>
        <translation>WARNUNG!
Die Debug-Protokollierung ist eingeschaltet.
Ihre persönlichen Daten können in die Protokolldatei gelangen.</translation>
    </message>
    <message>
        <source>User: %0</source>
        <translation>Benutzer: %0</translation>
    </message>
    <message>
        <source>Domain: %0, User: %1</source>
        <translation>Domäne: %0, Benutzer: %1</translation>
    </message>
    <message>
        <source>Password change procedure initiated. Please enter and confirm new password.</source>
        <translation>Die Kennwortänderung wurde eingeleitet. Geben Sie das neue Kennwort ein und bestätigen Sie es.</translation>
    </message>
    <message>
        <source>Enter new password</source>
        <translation>Neues Kennwort eingeben</translation>
    </message>
    <message>
        <source>Wrong password</source>
        <translation>Falsches Kennwort</translation>
    </message>
    <message>
        <source>New password is not confirmed. Please confirm your new password.</source>
        <translation>Das neue Kennwort ist nicht bestätigt. Bitte bestätigen Sie Ihr neues Kennwort.</translation>
    </message>
    <message>
        <source>Password Reset</source>
        <translation>Kennwort zurücksetzen</translation>
    </message>
    <message>
        <source>You are starting the password reset procedure. You have to contact the system administrator, gave him some data and enter back other data, it can take some time.

Are you sure that you want to start the password reset procedure?</source>
        <translation>Sie beginnen mit dem Zurücksetzen des Kennworts. Dazu müssen Sie sich an den Systemadministrator wenden, ihm einige Angaben mitteilen und andere eingeben, die er Ihnen nennt. Das kann einige Zeit dauern.

Möchten Sie das Kennwort wirklich zurücksetzen?</translation>
    </message>
    <message>
        <source>Password Reset: confirmation of exit</source>
        <translation>Kennwort zurücksetzen: Beenden bestätigen</translation>
    </message>
    <message>
        <source>Are you sure that you want to exit the password reset procedure?</source>
        <translation>Möchten Sie das Zurücksetzen des Kennworts wirklich beenden?</translation>
    </message>
    <message>
        <source>QUIT</source>
        <translation>BEENDEN</translation>
    </message>
    <message>
        <source>Password Reset: confirmation of restart</source>
        <translation>Kennwort zurücksetzen: Neubeginn bestätigen</translation>
    </message>
    <message>
        <source>Are you sure that you want to restart the password reset procedure?</source>
        <translation>Möchten Sie wirklich neu mit dem Zurücksetzen des Kennworts beginnen?</translation>
    </message>
    <message>
        <source>RESTART</source>
        <translation>NEU BEGINNEN</translation>
    </message>
    <message>
        <source>Response line is rejected. Please check it carefully and correct invalid characters.</source>
        <translation>Die Antwortzeile wurde abgelehnt. Prüfen Sie sie sorgfältig und berichtigen Sie die falschen Zeichen.</translation>
    </message>
    <message>
        <source>Response is rejected. Please click the Continue button to enter response strings again.</source>
        <translation>Die Antwort wurde abgelehnt. Klicken Sie auf „WEITER“, um die Zeichenfolgen erneut einzugeben.</translation>
    </message>
    <message>
        <source>Response is accepted. Please click the Continue button to specify a new password.</source>
        <translation>Die Antwort wurde akzeptiert. Klicken Sie auf „WEITER“, um ein neues Kennwort festzulegen.</translation>
    </message>
</context>
</TS>
