<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru" sourcelanguage="en_US">
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
        <translation>Предзагрузочная аутентификация</translation>
    </message>
    <message>
        <source>WARNING!
Verbose debug logging is enabled.
Your private information can be saved to log file.</source>
        <translation>ВНИМАНИЕ!
Включено подробное отладочное протоколирование.
Ваши личные сведения могут попасть в файл журнала.</translation>
    </message>
    <message>
        <source>To authenticate with a token or smart card, please connect it now.</source>
        <translation>Для входа с токеном или смарт-картой подключите их сейчас.</translation>
    </message>
    <message>
        <source>Domain</source>
        <translation>Домен</translation>
    </message>
    <message>
        <source>Domain:</source>
        <translation>Домен:</translation>
    </message>
    <message>
        <source>Change</source>
        <comment>Change domain</comment>
        <translation>Изменить</translation>
    </message>
    <message>
        <source>Login</source>
        <translation>Имя пользователя</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Пароль</translation>
    </message>
    <message>
        <source>CONTINUE</source>
        <comment>Login</comment>
        <translation>ПРОДОЛЖИТЬ</translation>
    </message>
    <message>
        <source>Forgot your password?</source>
        <translation>Забыли пароль?</translation>
    </message>
    <message>
        <source>Password change</source>
        <translation>Сменить пароль</translation>
    </message>
    <message>
        <source>New password</source>
        <translation>Новый пароль</translation>
    </message>
    <message>
        <source>Confirm new password</source>
        <translation>Подтвердите новый пароль</translation>
    </message>
    <message>
        <source>CONTINUE</source>
        <comment>Change password</comment>
        <translation>ПРОДОЛЖИТЬ</translation>
    </message>
    <message>
        <source>Start Windows without password change</source>
        <translation>Запустить Windows без смены пароля</translation>
    </message>
    <message>
        <source>Password Reset. Step 1: Entropy</source>
        <translation>Сброс пароля. Шаг 1: случайные данные</translation>
    </message>
    <message>
        <source>Please press random keys several times or move mouse to increase entropy.</source>
        <translation>Несколько раз нажмите произвольные клавиши или перемещайте мышь, чтобы накопить случайные данные.</translation>
    </message>
    <message>
        <source>Password Reset. Step 2: Challenge</source>
        <translation>Сброс пароля. Шаг 2: запрос</translation>
    </message>
    <message>
        <source>Please tell the system administrator the name of your computer and the strings displayed on the screen:</source>
        <translation>Сообщите системному администратору имя вашего компьютера и строки, показанные на экране:</translation>
    </message>
    <message>
        <source>String 1:</source>
        <translation>Строка 1:</translation>
    </message>
    <message>
        <source>String 2:</source>
        <translation>Строка 2:</translation>
    </message>
    <message>
        <source>String 3:</source>
        <translation>Строка 3:</translation>
    </message>
    <message>
        <source>CONTINUE</source>
        <comment>Challenge.</comment>
        <translation>ПРОДОЛЖИТЬ</translation>
    </message>
    <message>
        <source>Password Reset. Step 3: Response</source>
        <translation>Сброс пароля. Шаг 3: ответ</translation>
    </message>
    <message>
        <source>Please enter the strings provided by the system administrator, then click &quot;CONTINUE&quot;:</source>
        <translation>Введите строки, полученные от системного администратора, затем нажмите «ПРОДОЛЖИТЬ»:</translation>
    </message>
    <message>
        <source>Accepted</source>
        <translation>Принято</translation>
    </message>
    <message>
        <source>Rejected</source>
        <translation>Отклонено</translation>
    </message>
    <message>
        <source>Response accepted.</source>
        <translation>Ответ принят.</translation>
    </message>
    <message>
        <source>CONTINUE</source>
        <comment>Response</comment>
        <translation>ПРОДОЛЖИТЬ</translation>
    </message>
    <message>
        <source>Preparing for compatibility check of the hard drive and authentication agent.</source>
        <comment>Test boot</comment>
        <translation>Подготовка к проверке совместимости жёсткого диска и агента аутентификации.</translation>
    </message>
    <message>
        <source>If the computer becomes unresponsive for more than 10 minutes, please restart it manually and notify your system administrator.</source>
        <comment>Test boot</comment>
        <translation>Если компьютер не отвечает более 10 минут, перезагрузите его вручную и сообщите об этом системному администратору.</translation>
    </message>
    <message>
        <source>Windows will soon restart. Press any key or click &quot;CONTINUE&quot; to restart now.</source>
        <comment>Test boot</comment>
        <translation>Windows скоро перезагрузится. Чтобы перезагрузить сейчас, нажмите любую клавишу или кнопку «ПРОДОЛЖИТЬ».</translation>
    </message>
    <message>
        <source>CONTINUE</source>
        <comment>Test boot</comment>
        <translation>ПРОДОЛЖИТЬ</translation>
    </message>
    <message>
        <source>Please connect your token or smart card</source>
        <translation>Подключите токен или смарт-карту</translation>
    </message>
    <message>
        <source>Temporary password reset</source>
        <translation>Временный сброс пароля</translation>
    </message>
    <message>
        <source>To authenticate using user name and password, please eject your smart card.</source>
        <translation>Для входа по имени пользователя и паролю извлеките смарт-карту.</translation>
    </message>
    <message>
        <source>To authenticate using user name and password, please eject all smart cards.</source>
        <translation>Для входа по имени пользователя и паролю извлеките все смарт-карты.</translation>
    </message>
    <message>
        <source>Quillmark authentication agent is starting.</source>
        <translation>Запускается агент аутентификации Quillmark.</translation>
    </message>
    <message>
        <source>Starting Windows</source>
        <translation>Запуск Windows</translation>
    </message>
    <message>
        <source>No credentials for logon.</source>
        <translation>Нет учётных данных для входа.</translation>
    </message>
    <message>
        <source>Credentials of all users were removed. No one can log on to this computer by credentials.
Please contact the system administrator.</source>
        <translation>Учётные данные всех пользователей удалены. Никто не может войти на этот компьютер с учётными данными.
Обратитесь к системному администратору.</translation>
    </message>
    <message>
        <source>PBA Test mode</source>
        <translation>Тестовый режим PBA</translation>
    </message>
    <message>
        <source>Use this mode to test keyboard and pointing devices.</source>
        <translation>В этом режиме можно проверить клавиатуру и указывающие устройства.</translation>
    </message>
    <message>
        <source>Type any characters here</source>
        <translation>Введите здесь любые символы</translation>
    </message>
    <message>
        <source>START WINDOWS</source>
        <translation>ЗАПУСТИТЬ WINDOWS</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Выйти</translation>
    </message>
    <message>
        <source>Restart</source>
        <translation>Заново</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Справка</translation>
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
        <translation>&amp;Отменить</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Повторить</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>&amp;Вырезать</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Копировать</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>В&amp;ставить</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Удалить</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Выделить всё</translation>
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
        <translation>Shift</translation>
    </message>
</context>
<context>
    <name>ResponseInput</name>
    <message>
        <source>String %0:</source>
        <translation>Строка %0:</translation>
    </message>
</context>
<context>
    <name>pba::QtViewImpl</name>
    <message>
        <source>No help for this screen</source>
        <translation>Для этого экрана нет справки</translation>
    </message>
    <message>
        <source>This screen does not have a special help message.</source>
        <translation>Для этого экрана нет отдельного текста справки.</translation>
    </message>
    <message>
        <source>Preboot authentication help</source>
        <translation>Справка по предзагрузочной аутентификации</translation>
    </message>
    <message>
        <source>Domain: %0</source>
        <translation>Домен: %0</translation>
    </message>
    <message>
        <source>User name field is empty</source>
        <translation>Не указано имя пользователя</translation>
    </message>
    <message>
        <source>User name field is empty. Please enter a user name.</source>
        <translation>Поле имени пользователя не заполнено. Введите имя пользователя.</translation>
    </message>
    <message>
        <source>Password field is empty</source>
        <translation>Не указан пароль</translation>
    </message>
    <message>
        <source>Password field is empty. Please enter a password.</source>
        <translation>Поле пароля не заполнено. Введите пароль.</translation>
    </message>
    <message>
        <source>CONTINUE</source>
        <translation>ПРОДОЛЖИТЬ</translation>
    </message>
    <message>
        <source>Forgot your password?</source>
        <translation>Забыли пароль?</translation>
    </message>
    <message>
        <source>CANCEL</source>
        <translation>ОТМЕНА</translation>
    </message>
    <message>
        <source>Internal Error</source>
        <translation>Внутренняя ошибка</translation>
    </message>
    <message>
        <source>Internal PBA error.

Function: %1
Line: %2
res: %3(%4)</source>
        <translation>Внутренняя ошибка PBA.

Функция: %1
Строка: %2
res: %3(%4)</translation>
    </message>
    <message>
        <source>WARNING!
Verbose debug logging is enabled.
Your private data can be saved to log file.</source>
        <translation>ВНИМАНИЕ!
Включено подробное отладочное протоколирование.
Ваши личные данные могут попасть в файл журнала.</translation>
    </message>
    <message>
        <source>WARNING!
Debug logging is enabled.
Your private data can be saved to log file.</source>
        <translation>ВНИМАНИЕ!
Включено отладочное протоколирование.
Ваши личные данные могут попасть в файл журнала.</translation>
    </message>
    <message>
        <source>User: %0</source>
        <translation>Пользователь: %0</translation>
    </message>
    <message>
        <source>Domain: %0, User: %1</source>
        <translation>Домен: %0, пользователь: %1</translation>
    </message>
    <message>
        <source>Password change procedure initiated. Please enter and confirm new password.</source>
        <translation>Начата процедура смены пароля. Введите и подтвердите новый пароль.</translation>
    </message>
    <message>
        <source>Enter new password</source>
        <translation>Ввод нового пароля</translation>
    </message>
    <message>
        <source>Wrong password</source>
        <translation>Неверный пароль</translation>
    </message>
    <message>
        <source>New password is not confirmed. Please confirm your new password.</source>
        <translation>Новый пароль не подтверждён. Подтвердите новый пароль.</translation>
    </message>
    <message>
        <source>Password Reset</source>
        <translation>Сброс пароля</translation>
    </message>
    <message>
        <source>You are starting the password reset procedure. You have to contact the system administrator, gave him some data and enter back other data, it can take some time.

Are you sure that you want to start the password reset procedure?</source>
        <translation>Вы начинаете процедуру сброса пароля. Вам потребуется связаться с системным администратором, сообщить ему некоторые данные и ввести данные, полученные от него; это может занять некоторое время.

Вы действительно хотите начать процедуру сброса пароля?</translation>
    </message>
    <message>
        <source>Password Reset: confirmation of exit</source>
        <translation>Сброс пароля: подтверждение выхода</translation>
    </message>
    <message>
        <source>Are you sure that you want to exit the password reset procedure?</source>
        <translation>Вы действительно хотите выйти из процедуры сброса пароля?</translation>
    </message>
    <message>
        <source>QUIT</source>
        <translation>ВЫЙТИ</translation>
    </message>
    <message>
        <source>Password Reset: confirmation of restart</source>
        <translation>Сброс пароля: подтверждение начала заново</translation>
    </message>
    <message>
        <source>Are you sure that you want to restart the password reset procedure?</source>
        <translation>Вы действительно хотите начать процедуру сброса пароля заново?</translation>
    </message>
    <message>
        <source>RESTART</source>
        <translation>НАЧАТЬ ЗАНОВО</translation>
    </message>
    <message>
        <source>Response line is rejected. Please check it carefully and correct invalid characters.</source>
        <translation>Строка ответа отклонена. Внимательно проверьте её и исправьте неверные символы.</translation>
    </message>
    <message>
        <source>Response is rejected. Please click the Continue button to enter response strings again.</source>
        <translation>Ответ отклонён. Нажмите кнопку «ПРОДОЛЖИТЬ», чтобы ввести строки ответа заново.</translation>
    </message>
    <message>
        <source>Response is accepted. Please click the Continue button to specify a new password.</source>
        <translation>Ответ принят. Нажмите кнопку «ПРОДОЛЖИТЬ», чтобы задать новый пароль.</translation>
    </message>
</context>
</TS>
