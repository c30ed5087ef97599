<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en_US">
<context>
    <name>pba_host</name>
    <message>
        <source>Wrong user name or password</source>
        <translation>Falscher Benutzername oder falsches Kennwort</translation>
    </message>
    <message>
        <source>The user name, the domain or the password is wrong. Please check the keyboard layout and Caps Lock, and try again.</source>
        <translation>Der Benutzername, die Domäne oder das Kennwort ist falsch. Prüfen Sie die Tastaturbelegung und die Feststelltaste und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>Not enough memory</source>
        <translation>Nicht genügend Arbeitsspeicher</translation>
    </message>
    <message>
        <source>There is not enough memory to check the password. Please restart the computer and try again.</source>
        <translation>Der Arbeitsspeicher reicht nicht aus, um das Kennwort zu prüfen. Starten Sie den Computer neu und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>The disk does not answer</source>
        <translation>Der Datenträger antwortet nicht</translation>
    </message>
    <message>
        <source>The encrypted disk has been removed. Please connect it again and try again.</source>
        <translation>Der verschlüsselte Datenträger wurde entfernt. Schließen Sie ihn wieder an und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>The disk cannot be read</source>
        <translation>Der Datenträger kann nicht gelesen werden</translation>
    </message>
    <message>
        <source>The header of the encrypted disk cannot be read. Please contact the system administrator.</source>
        <translation>Der Kopf des verschlüsselten Datenträgers kann nicht gelesen werden. Bitte wenden Sie sich an den Systemadministrator.</translation>
    </message>
    <message>
        <source>No password recovery</source>
        <translation>Keine Kennwortwiederherstellung</translation>
    </message>
    <message>
        <source>This computer has no password recovery. Please contact the system administrator.</source>
        <translation>Auf diesem Computer ist keine Kennwortwiederherstellung eingerichtet. Bitte wenden Sie sich an den Systemadministrator.</translation>
    </message>
    <message>
        <source>The password stays as it is</source>
        <translation>Das Kennwort bleibt unverändert</translation>
    </message>
    <message>
        <source>The password cannot be changed here. The operating system starts now.</source>
        <translation>Das Kennwort kann hier nicht geändert werden. Das Betriebssystem wird jetzt gestartet.</translation>
    </message>
    <message>
        <source>The new password is too short</source>
        <translation>Das neue Kennwort ist zu kurz</translation>
    </message>
    <message>
        <source>The new password is shorter than your organisation allows. Please choose a longer one.</source>
        <translation>Das neue Kennwort ist kürzer, als Ihre Organisation es erlaubt. Bitte wählen Sie ein längeres.</translation>
    </message>
    <message>
        <source>The new password is the old one</source>
        <translation>Das neue Kennwort ist das alte</translation>
    </message>
    <message>
        <source>Please choose a password that differs from the old one.</source>
        <translation>Wählen Sie ein Kennwort, das sich vom alten unterscheidet.</translation>
    </message>
    <message>
        <source>The new password is not saved</source>
        <translation>Das neue Kennwort wurde nicht gespeichert</translation>
    </message>
    <message>
        <source>The new password cannot be written to the disk. Nothing has changed. Please contact the system administrator.</source>
        <translation>Das neue Kennwort kann nicht auf den Datenträger geschrieben werden. Es hat sich nichts geändert. Bitte wenden Sie sich an den Systemadministrator.</translation>
    </message>
    <message>
        <source>The password cannot be reset</source>
        <translation>Das Kennwort kann nicht zurückgesetzt werden</translation>
    </message>
    <message>
        <source>The encrypted disk cannot be written, so that a new password could not be saved. Please contact the system administrator.</source>
        <translation>Auf den verschlüsselten Datenträger kann nicht geschrieben werden, ein neues Kennwort könnte daher nicht gespeichert werden. Bitte wenden Sie sich an den Systemadministrator.</translation>
    </message>
    <message>
        <source>Unknown user</source>
        <translation>Unbekannter Benutzer</translation>
    </message>
    <message>
        <source>The response is right, but names a user who does not exist on this computer.</source>
        <translation>Die Antwort ist richtig, nennt aber einen Benutzer, den es auf diesem Computer nicht gibt.</translation>
    </message>
    <message>
        <source>Too many rejected responses</source>
        <translation>Zu viele abgelehnte Antworten</translation>
    </message>
    <message>
        <source>The challenge is void now, no response to it is accepted any more. Please restart the password reset procedure for a new challenge.</source>
        <translation>Die Anfrage ist jetzt ungültig, keine Antwort darauf wird mehr angenommen. Beginnen Sie neu mit dem Zurücksetzen des Kennworts, um eine neue Anfrage zu erhalten.</translation>
    </message>
    <message>
        <source>Enter a new password</source>
        <translation>Neues Kennwort eingeben</translation>
    </message>
    <message>
        <source>Please choose a new password and enter it twice. The forgotten one is not accepted any more.</source>
        <translation>Wählen Sie ein neues Kennwort und geben Sie es zweimal ein. Das vergessene wird nicht mehr angenommen.</translation>
    </message>
    <message>
        <source>Too many failed attempts</source>
        <translation>Zu viele Fehlversuche</translation>
    </message>
    <message>
        <source>There were too many failed attempts to log on. Please wait and try again. Seconds left: %1.</source>
        <translation>Es gab zu viele fehlgeschlagene Anmeldeversuche. Bitte warten Sie und versuchen Sie es erneut. Verbleibende Sekunden: %1.</translation>
    </message>
    <message>
        <source>The keyboard layout is %1.</source>
        <translation>Die Tastaturbelegung ist „%1“.</translation>
    </message>
    <message>
        <source>Caps Lock is on.</source>
        <translation>Die Feststelltaste ist eingeschaltet.</translation>
    </message>
    <message>
        <source>Wrong PIN</source>
        <translation>Falsche PIN</translation>
    </message>
    <message>
        <source>This token does not open the disk</source>
        <translation>Dieses Token öffnet den Datenträger nicht</translation>
    </message>
    <message>
        <source>The PIN is missing</source>
        <translation>Die PIN fehlt</translation>
    </message>
    <message>
        <source>Please enter the PIN of your token or smart card.</source>
        <translation>Bitte geben Sie die PIN Ihres Tokens oder Ihrer Smartcard ein.</translation>
    </message>
    <message>
        <source>The PIN is wrong. Please check the keyboard layout and Num Lock, and try again.</source>
        <translation>Die PIN ist falsch. Prüfen Sie die Tastaturbelegung und die Num-Taste und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>The PIN is wrong. Only a few tries are left before the token locks itself.</source>
        <translation>Die PIN ist falsch. Es bleiben nur noch wenige Versuche, bevor sich das Token selbst sperrt.</translation>
    </message>
    <message>
        <source>The PIN is wrong. This is the last try: one more wrong PIN locks the token. If you are not sure, please contact the system administrator.</source>
        <translation>Die PIN ist falsch. Dies ist der letzte Versuch: Eine weitere falsche PIN sperrt das Token. Wenn Sie nicht sicher sind, wenden Sie sich bitte an den Systemadministrator.</translation>
    </message>
    <message>
        <source>The PIN is locked</source>
        <translation>Die PIN ist gesperrt</translation>
    </message>
    <message>
        <source>The token has locked itself after too many wrong PINs. Please contact the system administrator to unlock it.</source>
        <translation>Das Token hat sich nach zu vielen falschen PINs selbst gesperrt. Bitte wenden Sie sich zum Entsperren an den Systemadministrator.</translation>
    </message>
    <message>
        <source>The token was removed</source>
        <translation>Das Token wurde entfernt</translation>
    </message>
    <message>
        <source>The token was removed or does not answer. Please connect it again and try again.</source>
        <translation>Das Token wurde entfernt oder antwortet nicht. Schließen Sie es wieder an und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>The token is not registered on this computer. Please use another token, or contact the system administrator.</source>
        <translation>Das Token ist auf diesem Computer nicht registriert. Verwenden Sie ein anderes Token oder wenden Sie sich an den Systemadministrator.</translation>
    </message>
    <message>
        <source>The PIN is right, but the token no longer has the key that opens the disk. Please contact the system administrator.</source>
        <translation>Die PIN ist richtig, aber das Token enthält den Schlüssel nicht mehr, der den Datenträger öffnet. Bitte wenden Sie sich an den Systemadministrator.</translation>
    </message>
    <message>
        <source>The token cannot be used</source>
        <translation>Das Token kann nicht verwendet werden</translation>
    </message>
    <message>
        <source>The token refuses to work. Please contact the system administrator.</source>
        <translation>Das Token verweigert den Dienst. Bitte wenden Sie sich an den Systemadministrator.</translation>
    </message>
    <message>
        <source>%1 (PIN at the reader)</source>
        <translation>%1 (PIN am Lesegerät)</translation>
    </message>
    <message>
        <source>Your password has expired</source>
        <translation>Ihr Kennwort ist abgelaufen</translation>
    </message>
    <message>
        <source>Please choose a new password and enter it twice.</source>
        <translation>Wählen Sie ein neues Kennwort und geben Sie es zweimal ein.</translation>
    </message>
    <message>
        <source>A new password cannot be saved now. The operating system starts with the old one. Please contact the system administrator.</source>
        <translation>Ein neues Kennwort kann jetzt nicht gespeichert werden. Das Betriebssystem startet mit dem alten. Bitte wenden Sie sich an den Systemadministrator.</translation>
    </message>
    <message>
        <source>The password depends on the keyboard layout</source>
        <translation>Das Kennwort hängt von der Tastaturbelegung ab</translation>
    </message>
    <message>
        <source>The new password is saved. It cannot be typed by these keyboard layouts: %1. Choose another layout when you log on.</source>
        <translation>Das neue Kennwort ist gespeichert. Mit diesen Tastaturbelegungen kann es nicht eingegeben werden: %1. Wählen Sie beim Anmelden eine andere Belegung.</translation>
    </message>
    <message>
        <source>The disk has a fault</source>
        <translation>Der Datenträger hat einen Fehler</translation>
    </message>
    <message>
        <source>The encrypted disk reports errors when it is read or written. Please switch the computer off and contact the system administrator.</source>
        <translation>Der verschlüsselte Datenträger meldet Fehler beim Lesen oder Schreiben. Bitte schalten Sie den Computer aus und wenden Sie sich an den Systemadministrator.</translation>
    </message>
    <message>
        <source>The disk is in use</source>
        <translation>Der Datenträger wird gerade verwendet</translation>
    </message>
    <message>
        <source>Another program is changing the encrypted disk. Please try again in a few seconds.</source>
        <translation>Ein anderes Programm ändert gerade den verschlüsselten Datenträger. Bitte versuchen Sie es in einigen Sekunden erneut.</translation>
    </message>
    <message>
        <source>The PIN has expired</source>
        <translation>Die PIN ist abgelaufen</translation>
    </message>
    <message>
        <source>The token wants a new PIN, which cannot be set here. Please contact the system administrator.</source>
        <translation>Das Token verlangt eine neue PIN, die hier nicht gesetzt werden kann. Bitte wenden Sie sich an den Systemadministrator.</translation>
    </message>
    <message>
        <source>User name (? for a forgotten password): </source>
        <translation>Benutzername (? bei vergessenem Kennwort): </translation>
    </message>
    <message>
        <source>Domain (may be empty): </source>
        <translation>Domäne (darf leer sein): </translation>
    </message>
    <message>
        <source>Password: </source>
        <translation>Kennwort: </translation>
    </message>
    <message>
        <source>New password: </source>
        <translation>Neues Kennwort: </translation>
    </message>
    <message>
        <source>New password, once more: </source>
        <translation>Neues Kennwort, noch einmal: </translation>
    </message>
    <message>
        <source>The two passwords are not the same. Please try again.</source>
        <translation>Die beiden Kennwörter sind nicht gleich. Versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>Please wait.</source>
        <translation>Bitte warten.</translation>
    </message>
    <message>
        <source>Please read these lines to the system administrator:</source>
        <translation>Lesen Sie dem Systemadministrator diese Zeilen vor:</translation>
    </message>
    <message>
        <source>Line %1 of the response (empty to give up): </source>
        <translation>Zeile %1 der Antwort (leer zum Abbrechen): </translation>
    </message>
    <message>
        <source>There is a mistake in this line. Please check it and try again.</source>
        <translation>In dieser Zeile ist ein Fehler. Prüfen Sie sie und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>The response is not accepted. Please check it and try again.</source>
        <translation>Die Antwort wird nicht angenommen. Prüfen Sie sie und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>The operating system starts.</source>
        <translation>Das Betriebssystem startet.</translation>
    </message>
    <message>
        <source>The test boot has succeeded.</source>
        <translation>Der Teststart war erfolgreich.</translation>
    </message>
</context>
</TS>
