<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en_US">
<context>
    <name>pba_host</name>
    <message>
        <source>Wrong user name or password</source>
        <translation>Nom d’utilisateur ou mot de passe incorrect</translation>
    </message>
    <message>
        <source>The user name, the domain or the password is wrong. Please check the keyboard layout and Caps Lock, and try again.</source>
        <translation>Le nom d’utilisateur, le domaine ou le mot de passe est incorrect. Vérifiez la disposition du clavier et le verrouillage des majuscules, puis réessayez.</translation>
    </message>
    <message>
        <source>Not enough memory</source>
        <translation>Mémoire insuffisante</translation>
    </message>
    <message>
        <source>There is not enough memory to check the password. Please restart the computer and try again.</source>
        <translation>La mémoire ne suffit pas pour vérifier le mot de passe. Redémarrez l’ordinateur et réessayez.</translation>
    </message>
    <message>
        <source>The disk does not answer</source>
        <translation>Le disque ne répond pas</translation>
    </message>
    <message>
        <source>The encrypted disk has been removed. Please connect it again and try again.</source>
        <translation>Le disque chiffré a été retiré. Reconnectez-le et réessayez.</translation>
    </message>
    <message>
        <source>The disk cannot be read</source>
        <translation>Le disque est illisible</translation>
    </message>
    <message>
        <source>The header of the encrypted disk cannot be read. Please contact the system administrator.</source>
        <translation>L’en-tête du disque chiffré est illisible. Contactez l’administrateur système.</translation>
    </message>
    <message>
        <source>No password recovery</source>
        <translation>Pas de récupération du mot de passe</translation>
    </message>
    <message>
        <source>This computer has no password recovery. Please contact the system administrator.</source>
        <translation>La récupération du mot de passe n’est pas disponible sur cet ordinateur. Contactez l’administrateur système.</translation>
    </message>
    <message>
        <source>The password stays as it is</source>
        <translation>Le mot de passe reste inchangé</translation>
    </message>
    <message>
        <source>The password cannot be changed here. The operating system starts now.</source>
        <translation>Le mot de passe ne peut pas être changé ici. Le système d’exploitation démarre maintenant.</translation>
    </message>
    <message>
        <source>The new password is too short</source>
        <translation>Le nouveau mot de passe est trop court</translation>
    </message>
    <message>
        <source>The new password is shorter than your organisation allows. Please choose a longer one.</source>
        <translation>Le nouveau mot de passe est plus court que ne le permet votre organisation. Choisissez-en un plus long.</translation>
    </message>
    <message>
        <source>The new password is the old one</source>
        <translation>Le nouveau mot de passe est l’ancien</translation>
    </message>
    <message>
        <source>Please choose a password that differs from the old one.</source>
        <translation>Choisissez un mot de passe différent de l’ancien.</translation>
    </message>
    <message>
        <source>The new password is not saved</source>
        <translation>Le nouveau mot de passe n’est pas enregistré</translation>
    </message>
    <message>
        <source>The new password cannot be written to the disk. Nothing has changed. Please contact the system administrator.</source>
        <translation>Le nouveau mot de passe ne peut pas être écrit sur le disque. Rien n’a changé. Contactez l’administrateur système.</translation>
    </message>
    <message>
        <source>The password cannot be reset</source>
        <translation>Le mot de passe ne peut pas être réinitialisé</translation>
    </message>
    <message>
        <source>The encrypted disk cannot be written, so that a new password could not be saved. Please contact the system administrator.</source>
        <translation>Le disque chiffré n’est pas accessible en écriture&#xa0;: un nouveau mot de passe ne pourrait pas être enregistré. Contactez l’administrateur système.</translation>
    </message>
    <message>
        <source>Unknown user</source>
        <translation>Utilisateur inconnu</translation>
    </message>
    <message>
        <source>The response is right, but names a user who does not exist on this computer.</source>
        <translation>La réponse est correcte, mais elle désigne un utilisateur qui n’existe pas sur cet ordinateur.</translation>
    </message>
    <message>
        <source>Too many rejected responses</source>
        <translation>Trop de réponses refusées</translation>
    </message>
    <message>
        <source>The challenge is void now, no response to it is accepted any more. Please restart the password reset procedure for a new challenge.</source>
        <translation>La demande n’est plus valable, aucune réponse à celle-ci n’est plus acceptée. Recommencez la procédure de réinitialisation du mot de passe pour obtenir une nouvelle demande.</translation>
    </message>
    <message>
        <source>Enter a new password</source>
        <translation>Saisissez un nouveau mot de passe</translation>
    </message>
    <message>
        <source>Please choose a new password and enter it twice. The forgotten one is not accepted any more.</source>
        <translation>Choisissez un nouveau mot de passe et saisissez-le deux fois. Celui que vous avez oublié n’est plus accepté.</translation>
    </message>
    <message>
        <source>Too many failed attempts</source>
        <translation>Trop de tentatives infructueuses</translation>
    </message>
    <message>
        <source>There were too many failed attempts to log on. Please wait and try again. Seconds left: %1.</source>
        <translation>Il y a eu trop de tentatives de connexion infructueuses. Patientez, puis réessayez. Secondes restantes&#xa0;: %1.</translation>
    </message>
    <message>
        <source>The keyboard layout is %1.</source>
        <translation>La disposition du clavier est «&#xa0;%1&#xa0;».</translation>
    </message>
    <message>
        <source>Caps Lock is on.</source>
        <translation>Le verrouillage des majuscules est activé.</translation>
    </message>
    <message>
        <source>Wrong PIN</source>
        <translation>Code PIN incorrect</translation>
    </message>
    <message>
        <source>This token does not open the disk</source>
        <translation>Ce jeton n’ouvre pas le disque</translation>
    </message>
    <message>
        <source>The PIN is missing</source>
        <translation>Le code PIN manque</translation>
    </message>
    <message>
        <source>Please enter the PIN of your token or smart card.</source>
        <translation>Saisissez le code PIN de votre jeton ou de votre carte à puce.</translation>
    </message>
    <message>
        <source>The PIN is wrong. Please check the keyboard layout and Num Lock, and try again.</source>
        <translation>Le code PIN est incorrect. Vérifiez la disposition du clavier et le verrouillage numérique, puis réessayez.</translation>
    </message>
    <message>
        <source>The PIN is wrong. Only a few tries are left before the token locks itself.</source>
        <translation>Le code PIN est incorrect. Il ne reste que quelques essais avant que le jeton ne se verrouille.</translation>
    </message>
    <message>
        <source>The PIN is wrong. This is the last try: one more wrong PIN locks the token. If you are not sure, please contact the system administrator.</source>
        <translation>Le code PIN est incorrect. Il s’agit du dernier essai&#xa0;: un autre code PIN erroné verrouille le jeton. En cas de doute, contactez l’administrateur système.</translation>
    </message>
    <message>
        <source>The PIN is locked</source>
        <translation>Le code PIN est verrouillé</translation>
    </message>
    <message>
        <source>The token has locked itself after too many wrong PINs. Please contact the system administrator to unlock it.</source>
        <translation>Le jeton s’est verrouillé après trop de codes PIN erronés. Contactez l’administrateur système pour le déverrouiller.</translation>
    </message>
    <message>
        <source>The token was removed</source>
        <translation>Le jeton a été retiré</translation>
    </message>
    <message>
        <source>The token was removed or does not answer. Please connect it again and try again.</source>
        <translation>Le jeton a été retiré ou ne répond pas. Reconnectez-le et réessayez.</translation>
    </message>
    <message>
        <source>The token is not registered on this computer. Please use another token, or contact the system administrator.</source>
        <translation>Le jeton n’est pas enregistré sur cet ordinateur. Utilisez un autre jeton ou contactez l’administrateur système.</translation>
    </message>
    <message>
        <source>The PIN is right, but the token no longer has the key that opens the disk. Please contact the system administrator.</source>
        <translation>Le code PIN est correct, mais le jeton ne contient plus la clé qui ouvre le disque. Contactez l’administrateur système.</translation>
    </message>
    <message>
        <source>The token cannot be used</source>
        <translation>Le jeton est inutilisable</translation>
    </message>
    <message>
        <source>The token refuses to work. Please contact the system administrator.</source>
        <translation>Le jeton refuse de fonctionner. Contactez l’administrateur système.</translation>
    </message>
    <message>
        <source>%1 (PIN at the reader)</source>
        <translation>%1 (code PIN sur le lecteur)</translation>
    </message>
    <message>
        <source>Your password has expired</source>
        <translation>Votre mot de passe a expiré</translation>
    </message>
    <message>
        <source>Please choose a new password and enter it twice.</source>
        <translation>Choisissez un nouveau mot de passe et saisissez-le deux fois.</translation>
    </message>
    <message>
        <source>A new password cannot be saved now. The operating system starts with the old one. Please contact the system administrator.</source>
        <translation>Un nouveau mot de passe ne peut pas être enregistré maintenant. Le système d’exploitation démarre avec l’ancien. Contactez l’administrateur système.</translation>
    </message>
    <message>
        <source>The password depends on the keyboard layout</source>
        <translation>Le mot de passe dépend de la disposition du clavier</translation>
    </message>
    <message>
        <source>The new password is saved. It cannot be typed by these keyboard layouts: %1. Choose another layout when you log on.</source>
        <translation>Le nouveau mot de passe est enregistré. Il ne peut pas être tapé avec ces dispositions de clavier&#xa0;: %1. Choisissez-en une autre pour vous connecter.</translation>
    </message>
    <message>
        <source>The disk has a fault</source>
        <translation>Le disque est défaillant</translation>
    </message>
    <message>
        <source>The encrypted disk reports errors when it is read or written. Please switch the computer off and contact the system administrator.</source>
        <translation>Le disque chiffré signale des erreurs de lecture ou d’écriture. Éteignez l’ordinateur et contactez l’administrateur système.</translation>
    </message>
    <message>
        <source>The disk is in use</source>
        <translation>Le disque est occupé</translation>
    </message>
    <message>
        <source>Another program is changing the encrypted disk. Please try again in a few seconds.</source>
        <translation>Un autre programme est en train de modifier le disque chiffré. Réessayez dans quelques secondes.</translation>
    </message>
    <message>
        <source>The PIN has expired</source>
        <translation>Le code PIN a expiré</translation>
    </message>
    <message>
        <source>The token wants a new PIN, which cannot be set here. Please contact the system administrator.</source>
        <translation>Le jeton exige un nouveau code PIN, qui ne peut pas être défini ici. Contactez l’administrateur système.</translation>
    </message>
    <message>
        <source>User name (? for a forgotten password): </source>
        <translation>Nom d&apos;utilisateur (? en cas de mot de passe oublié) : </translation>
    </message>
    <message>
        <source>Domain (may be empty): </source>
        <translation>Domaine (peut rester vide) : </translation>
    </message>
    <message>
        <source>Password: </source>
        <translation>Mot de passe : </translation>
    </message>
    <message>
        <source>New password: </source>
        <translation>Nouveau mot de passe : </translation>
    </message>
    <message>
        <source>New password, once more: </source>
        <translation>Nouveau mot de passe, encore une fois : </translation>
    </message>
    <message>
        <source>The two passwords are not the same. Please try again.</source>
        <translation>Les deux mots de passe ne sont pas identiques. Veuillez réessayer.</translation>
    </message>
    <message>
        <source>Please wait.</source>
        <translation>Veuillez patienter.</translation>
    </message>
    <message>
        <source>Please read these lines to the system administrator:</source>
        <translation>Veuillez lire ces lignes à l&apos;administrateur système :</translation>
    </message>
    <message>
        <source>Line %1 of the response (empty to give up): </source>
        <translation>Ligne %1 de la réponse (vide pour abandonner) : </translation>
    </message>
    <message>
        <source>There is a mistake in this line. Please check it and try again.</source>
        <translation>Cette ligne contient une erreur. Veuillez la vérifier et réessayer.</translation>
    </message>
    <message>
        <source>The response is not accepted. Please check it and try again.</source>
        <translation>La réponse n&apos;est pas acceptée. Veuillez la vérifier et réessayer.</translation>
    </message>
    <message>
        <source>The operating system starts.</source>
        <translation>Le système d&apos;exploitation démarre.</translation>
    </message>
    <message>
        <source>The test boot has succeeded.</source>
        <translation>Le démarrage de test a réussi.</translation>
    </message>
</context>
</TS>
