<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en_US">
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
        <translation>Authentification avant démarrage</translation>
    </message>
    <message>
        <source>WARNING!
Verbose debug logging is enabled.
Your private information can be saved to log file.</source>
        <translation>AVERTISSEMENT&#xa0;!
La journalisation de débogage détaillée est activée.
Vos informations personnelles peuvent être enregistrées dans le fichier journal.</translation>
    </message>
    <message>
        <source>To authenticate with a token or smart card, please connect it now.</source>
        <translation>Pour vous authentifier avec un jeton ou une carte à puce, connectez-le maintenant.</translation>
    </message>
    <message>
        <source>Domain</source>
        <translation>Domaine</translation>
    </message>
    <message>
        <source>Domain:</source>
        <translation>Domaine&#xa0;:</translation>
    </message>
    <message>
        <source>Change</source>
        <comment>Change domain</comment>
        <translation>Modifier</translation>
    </message>
    <message>
        <source>Login</source>
        <translation>Nom d’utilisateur</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Mot de passe</translation>
    </message>
    <message>
        <source>CONTINUE</source>
        <comment>Login</comment>
        <translation>CONTINUER</translation>
    </message>
    <message>
        <source>Forgot your password?</source>
        <translation>Mot de passe oublié&#xa0;?</translation>
    </message>
    <message>
        <source>Password change</source>
        <translation>Changer le mot de passe</translation>
    </message>
    <message>
        <source>New password</source>
        <translation>Nouveau mot de passe</translation>
    </message>
    <message>
        <source>Confirm new password</source>
        <translation>Confirmer le nouveau mot de passe</translation>
    </message>
    <message>
        <source>CONTINUE</source>
        <comment>Change password</comment>
        <translation>CONTINUER</translation>
    </message>
    <message>
        <source>Start Windows without password change</source>
        <translation>Démarrer Windows sans changer le mot de passe</translation>
    </message>
    <message>
        <source>Password Reset. Step 1: Entropy</source>
        <translation>Réinitialisation du mot de passe. Étape 1&#xa0;: données aléatoires</translation>
    </message>
    <message>
        <source>Please press random keys several times or move mouse to increase entropy.</source>
        <translation>Appuyez plusieurs fois sur des touches au hasard ou déplacez la souris pour augmenter l’entropie.</translation>
    </message>
    <message>
        <source>Password Reset. Step 2: Challenge</source>
        <translation>Réinitialisation du mot de passe. Étape 2&#xa0;: demande</translation>
    </message>
    <message>
        <source>Please tell the system administrator the name of your computer and the strings displayed on the screen:</source>
        <translation>Communiquez à l’administrateur système le nom de votre ordinateur et les chaînes affichées à l’écran&#xa0;:</translation>
    </message>
    <message>
        <source>String 1:</source>
        <translation>Chaîne 1&#xa0;:</translation>
    </message>
    <message>
        <source>String 2:</source>
        <translation>Chaîne 2&#xa0;:</translation>
    </message>
    <message>
        <source>String 3:</source>
        <translation>Chaîne 3&#xa0;:</translation>
    </message>
    <message>
        <source>CONTINUE</source>
        <comment>Challenge.</comment>
        <translation>CONTINUER</translation>
    </message>
    <message>
        <source>Password Reset. Step 3: Response</source>
        <translation>Réinitialisation du mot de passe. Étape 3&#xa0;: réponse</translation>
    </message>
    <message>
        <source>Please enter the strings provided by the system administrator, then click &quot;CONTINUE&quot;:</source>
        <translation>Saisissez les chaînes fournies par l’administrateur système, puis cliquez sur «&#xa0;CONTINUER&#xa0;»&#xa0;:</translation>
    </message>
    <message>
        <source>Accepted</source>
        <translation>Acceptée</translation>
    </message>
    <message>
        <source>Rejected</source>
        <translation>Refusée</translation>
    </message>
    <message>
        <source>Response accepted.</source>
        <translation>Réponse acceptée.</translation>
    </message>
    <message>
        <source>CONTINUE</source>
        <comment>Response</comment>
        <translation>CONTINUER</translation>
    </message>
    <message>
        <source>Preparing for compatibility check of the hard drive and authentication agent.</source>
        <comment>Test boot</comment>
        <translation>Préparation de la vérification de compatibilité entre le disque dur et l’agent d’authentification.</translation>
    </message>
    <message>
        <source>If the computer becomes unresponsive for more than 10 minutes, please restart it manually and notify your system administrator.</source>
        <comment>Test boot</comment>
        <translation>Si l’ordinateur ne répond plus pendant plus de 10 minutes, redémarrez-le manuellement et prévenez votre administrateur système.</translation>
    </message>
    <message>
        <source>Windows will soon restart. Press any key or click &quot;CONTINUE&quot; to restart now.</source>
        <comment>Test boot</comment>
        <translation>Windows va bientôt redémarrer. Appuyez sur une touche ou cliquez sur «&#xa0;CONTINUER&#xa0;» pour redémarrer maintenant.</translation>
    </message>
    <message>
        <source>CONTINUE</source>
        <comment>Test boot</comment>
        <translation>CONTINUER</translation>
    </message>
    <message>
        <source>Please connect your token or smart card</source>
        <translation>Connectez votre jeton ou votre carte à puce</translation>
    </message>
    <message>
        <source>Temporary password reset</source>
        <translation>Réinitialisation temporaire du mot de passe</translation>
    </message>
    <message>
        <source>To authenticate using user name and password, please eject your smart card.</source>
        <translation>Pour vous authentifier avec un nom d’utilisateur et un mot de passe, retirez votre carte à puce.</translation>
    </message>
    <message>
        <source>To authenticate using user name and password, please eject all smart cards.</source>
        <translation>Pour vous authentifier avec un nom d’utilisateur et un mot de passe, retirez toutes les cartes à puce.</translation>
    </message>
    <message>
        <source>Quillmark authentication agent is starting.</source>
        <translation>L’agent d’authentification Quillmark démarre.</translation>
    </message>
    <message>
        <source>Starting Windows</source>
        <translation>Démarrage de Windows</translation>
    </message>
    <message>
        <source>No credentials for logon.</source>
        <translation>Aucune information d’identification pour la connexion.</translation>
    </message>
    <message>
        <source>Credentials of all users were removed. No one can log on to this computer by credentials.
Please contact the system administrator.</source>
        <translation>Les informations d’identification de tous les utilisateurs ont été supprimées. Personne ne peut plus s’en servir pour se connecter à cet ordinateur.
Contactez l’administrateur système.</translation>
    </message>
    <message>
        <source>PBA Test mode</source>
        <translation>Mode de test PBA</translation>
    </message>
    <message>
        <source>Use this mode to test keyboard and pointing devices.</source>
        <translation>Ce mode permet de tester le clavier et les périphériques de pointage.</translation>
    </message>
    <message>
        <source>Type any characters here</source>
        <translation>Tapez ici des caractères quelconques</translation>
    </message>
    <message>
        <source>START WINDOWS</source>
        <translation>DÉMARRER WINDOWS</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Quitter</translation>
    </message>
    <message>
        <source>Restart</source>
        <translation>Recommencer</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Aide</translation>
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
        <translation>&amp;Annuler</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Rétablir</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>Co&amp;uper</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copier</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>Co&amp;ller</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Supprimer</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Tout sélectionner</translation>
    </message>
</context>
<context>
    <name>QShortcut</name>
    <message>
        <source>Ctrl</source>
        <translation>Ctrl</translation>
    </message>
    <message>
        <source>Shift</source>
        <translation>Maj</translation>
    </message>
</context>
<context>
    <name>ResponseInput</name>
    <message>
        <source>String %0:</source>
        <translation>Chaîne %0&#xa0;:</translation>
    </message>
</context>
<context>
    <name>pba::QtViewImpl</name>
    <message>
        <source>No help for this screen</source>
        <translation>Pas d’aide pour cet écran</translation>
    </message>
    <message>
        <source>This screen does not have a special help message.</source>
        <translation>Cet écran ne possède pas de message d’aide particulier.</translation>
    </message>
    <message>
        <source>Preboot authentication help</source>
        <translation>Aide de l’authentification avant démarrage</translation>
    </message>
    <message>
        <source>Domain: %0</source>
        <translation>Domaine&#xa0;: %0</translation>
    </message>
    <message>
        <source>User name field is empty</source>
        <translation>Le nom d’utilisateur est vide</translation>
    </message>
    <message>
        <source>User name field is empty. Please enter a user name.</source>
        <translation>Le nom d’utilisateur est vide. Saisissez un nom d’utilisateur.</translation>
    </message>
    <message>
        <source>Password field is empty</source>
        <translation>Le mot de passe est vide</translation>
    </message>
    <message>
        <source>Password field is empty. Please enter a password.</source>
        <translation>Le mot de passe est vide. Saisissez un mot de passe.</translation>
    </message>
    <message>
        <source>CONTINUE</source>
        <translation>CONTINUER</translation>
    </message>
    <message>
        <source>Forgot your password?</source>
        <translation>Mot de passe oublié&#xa0;?</translation>
    </message>
    <message>
        <source>CANCEL</source>
        <translation>ANNULER</translation>
    </message>
    <message>
        <source>Internal Error</source>
        <translation>Erreur interne</translation>
    </message>
    <message>
        <source>Internal PBA error.

Function: %1
Line: %2
res: %3(%4)</source>
        <translation>Erreur interne PBA.

Fonction&#xa0;: %1
Ligne&#xa0;: %2
res&#xa0;: %3(%4)</translation>
    </message>
    <message>
        <source>WARNING!
Verbose debug logging is enabled.
Your private data can be saved to log file.</source>
        <translation>AVERTISSEMENT&#xa0;!
La journalisation de débogage détaillée est activée.
Vos données personnelles peuvent être enregistrées dans le fichier journal.</translation>
    </message>
    <message>
        <source>WARNING!
Debug logging is enabled.
Your private data can be saved to log file.</source>
        <translation>AVERTISSEMENT&#xa0;!
La journalisation de débogage est activée.
Vos données personnelles peuvent être enregistrées dans le fichier journal.</translation>
    </message>
    <message>
        <source>User: %0</source>
        <translation>Utilisateur&#xa0;: %0</translation>
    </message>
    <message>
        <source>Domain: %0, User: %1</source>
        <translation>Domaine&#xa0;: %0, utilisateur&#xa0;: %1</translation>
    </message>
    <message>
        <source>Password change procedure initiated. Please enter and confirm new password.</source>
        <translation>La procédure de changement de mot de passe est lancée. Saisissez et confirmez le nouveau mot de passe.</translation>
    </message>
    <message>
        <source>Enter new password</source>
        <translation>Saisie du nouveau mot de passe</translation>
    </message>
    <message>
        <source>Wrong password</source>
        <translation>Mot de passe incorrect</translation>
    </message>
    <message>
        <source>New password is not confirmed. Please confirm your new password.</source>
        <translation>Le nouveau mot de passe n’est pas confirmé. Confirmez votre nouveau mot de passe.</translation>
    </message>
    <message>
        <source>Password Reset</source>
        <translation>Réinitialisation du mot de passe</translation>
    </message>
    <message>
        <source>You are starting the password reset procedure. You have to contact the system administrator, gave him some data and enter back other data, it can take some time.

Are you sure that you want to start the password reset procedure?</source>
        <translation>Vous allez lancer la procédure de réinitialisation du mot de passe. Vous devrez contacter l’administrateur système, lui communiquer certaines données et saisir celles qu’il vous donnera en retour, ce qui peut prendre un certain temps.

Voulez-vous vraiment lancer la procédure de réinitialisation du mot de passe&#xa0;?</translation>
    </message>
    <message>
        <source>Password Reset: confirmation of exit</source>
        <translation>Réinitialisation du mot de passe&#xa0;: confirmation de sortie</translation>
    </message>
    <message>
        <source>Are you sure that you want to exit the password reset procedure?</source>
        <translation>Voulez-vous vraiment quitter la procédure de réinitialisation du mot de passe&#xa0;?</translation>
    </message>
    <message>
        <source>QUIT</source>
        <translation>QUITTER</translation>
    </message>
    <message>
        <source>Password Reset: confirmation of restart</source>
        <translation>Réinitialisation du mot de passe&#xa0;: confirmation du redémarrage de la procédure</translation>
    </message>
    <message>
        <source>Are you sure that you want to restart the password reset procedure?</source>
        <translation>Voulez-vous vraiment recommencer la procédure de réinitialisation du mot de passe&#xa0;?</translation>
    </message>
    <message>
        <source>RESTART</source>
        <translation>RECOMMENCER</translation>
    </message>
    <message>
        <source>Response line is rejected. Please check it carefully and correct invalid characters.</source>
        <translation>La ligne de réponse est refusée. Vérifiez-la attentivement et corrigez les caractères erronés.</translation>
    </message>
    <message>
        <source>Response is rejected. Please click the Continue button to enter response strings again.</source>
        <translation>La réponse est refusée. Cliquez sur le bouton «&#xa0;CONTINUER&#xa0;» pour saisir à nouveau les chaînes de réponse.</translation>
    </message>
    <message>
        <source>Response is accepted. Please click the Continue button to specify a new password.</source>
        <translation>La réponse est acceptée. Cliquez sur le bouton «&#xa0;CONTINUER&#xa0;» pour définir un nouveau mot de passe.</translation>
    </message>
</context>
</TS>
