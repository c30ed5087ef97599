<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru" sourcelanguage="en_US">
<context>
    <name>pba_host</name>
    <message>
        <source>Wrong user name or password</source>
        <translation>Неверное имя пользователя или пароль</translation>
    </message>
    <message>
        <source>The user name, the domain or the password is wrong. Please check the keyboard layout and Caps Lock, and try again.</source>
        <translation>Имя пользователя, домен или пароль указаны неверно. Проверьте раскладку клавиатуры и клавишу Caps Lock и повторите попытку.</translation>
    </message>
    <message>
        <source>Not enough memory</source>
        <translation>Недостаточно памяти</translation>
    </message>
    <message>
        <source>There is not enough memory to check the password. Please restart the computer and try again.</source>
        <translation>Для проверки пароля недостаточно памяти. Перезагрузите компьютер и повторите попытку.</translation>
    </message>
    <message>
        <source>The disk does not answer</source>
        <translation>Диск не отвечает</translation>
    </message>
    <message>
        <source>The encrypted disk has been removed. Please connect it again and try again.</source>
        <translation>Зашифрованный диск отключён. Снова подключите его и повторите попытку.</translation>
    </message>
    <message>
        <source>The disk cannot be read</source>
        <translation>Диск не читается</translation>
    </message>
    <message>
        <source>The header of the encrypted disk cannot be read. Please contact the system administrator.</source>
        <translation>Не удаётся прочитать заголовок зашифрованного диска. Обратитесь к системному администратору.</translation>
    </message>
    <message>
        <source>No password recovery</source>
        <translation>Восстановление пароля недоступно</translation>
    </message>
    <message>
        <source>This computer has no password recovery. Please contact the system administrator.</source>
        <translation>На этом компьютере восстановление пароля не настроено. Обратитесь к системному администратору.</translation>
    </message>
    <message>
        <source>The password stays as it is</source>
        <translation>Пароль не изменён</translation>
    </message>
    <message>
        <source>The password cannot be changed here. The operating system starts now.</source>
        <translation>Здесь пароль сменить нельзя. Сейчас будет запущена операционная система.</translation>
    </message>
    <message>
        <source>The new password is too short</source>
        <translation>Новый пароль слишком короткий</translation>
    </message>
    <message>
        <source>The new password is shorter than your organisation allows. Please choose a longer one.</source>
        <translation>Новый пароль короче, чем разрешено в вашей организации. Выберите более длинный.</translation>
    </message>
    <message>
        <source>The new password is the old one</source>
        <translation>Новый пароль совпадает со старым</translation>
    </message>
    <message>
        <source>Please choose a password that differs from the old one.</source>
        <translation>Выберите пароль, отличный от старого.</translation>
    </message>
    <message>
        <source>The new password is not saved</source>
        <translation>Новый пароль не сохранён</translation>
    </message>
    <message>
        <source>The new password cannot be written to the disk. Nothing has changed. Please contact the system administrator.</source>
        <translation>Не удаётся записать новый пароль на диск. Ничего не изменилось. Обратитесь к системному администратору.</translation>
    </message>
    <message>
        <source>The password cannot be reset</source>
        <translation>Пароль нельзя сбросить</translation>
    </message>
    <message>
        <source>The encrypted disk cannot be written, so that a new password could not be saved. Please contact the system administrator.</source>
        <translation>Запись на зашифрованный диск невозможна, поэтому новый пароль не удалось бы сохранить. Обратитесь к системному администратору.</translation>
    </message>
    <message>
        <source>Unknown user</source>
        <translation>Неизвестный пользователь</translation>
    </message>
    <message>
        <source>The response is right, but names a user who does not exist on this computer.</source>
        <translation>Ответ верный, но в нём указан пользователь, которого нет на этом компьютере.</translation>
    </message>
    <message>
        <source>Too many rejected responses</source>
        <translation>Слишком много отклонённых ответов</translation>
    </message>
    <message>
        <source>The challenge is void now, no response to it is accepted any more. Please restart the password reset procedure for a new challenge.</source>
        <translation>Запрос больше не действителен, ответы на него не принимаются. Начните процедуру сброса пароля заново, чтобы получить новый запрос.</translation>
    </message>
    <message>
        <source>Enter a new password</source>
        <translation>Введите новый пароль</translation>
    </message>
    <message>
        <source>Please choose a new password and enter it twice. The forgotten one is not accepted any more.</source>
        <translation>Выберите новый пароль и введите его дважды. Забытый пароль больше не принимается.</translation>
    </message>
    <message>
        <source>Too many failed attempts</source>
        <translation>Слишком много неудачных попыток</translation>
    </message>
    <message>
        <source>There were too many failed attempts to log on. Please wait and try again. Seconds left: %1.</source>
        <translation>Слишком много неудачных попыток входа. Подождите и повторите попытку. Осталось секунд: %1.</translation>
    </message>
    <message>
        <source>The keyboard layout is %1.</source>
        <translation>Раскладка клавиатуры: %1.</translation>
    </message>
    <message>
        <source>Caps Lock is on.</source>
        <translation>Включён режим Caps Lock.</translation>
    </message>
    <message>
        <source>Wrong PIN</source>
        <translation>Неверный PIN-код</translation>
    </message>
    <message>
        <source>This token does not open the disk</source>
        <translation>Этот токен не открывает диск</translation>
    </message>
    <message>
        <source>The PIN is missing</source>
        <translation>PIN-код не введён</translation>
    </message>
    <message>
        <source>Please enter the PIN of your token or smart card.</source>
        <translation>Введите PIN-код токена или смарт-карты.</translation>
    </message>
    <message>
        <source>The PIN is wrong. Please check the keyboard layout and Num Lock, and try again.</source>
        <translation>PIN-код указан неверно. Проверьте раскладку клавиатуры и клавишу Num Lock и повторите попытку.</translation>
    </message>
    <message>
        <source>The PIN is wrong. Only a few tries are left before the token locks itself.</source>
        <translation>PIN-код указан неверно. До блокировки токена осталось всего несколько попыток.</translation>
    </message>
    <message>
        <source>The PIN is wrong. This is the last try: one more wrong PIN locks the token. If you are not sure, please contact the system administrator.</source>
        <translation>PIN-код указан неверно. Осталась последняя попытка: ещё один неверный PIN-код заблокирует токен. Если вы не уверены, обратитесь к системному администратору.</translation>
    </message>
    <message>
        <source>The PIN is locked</source>
        <translation>PIN-код заблокирован</translation>
    </message>
    <message>
        <source>The token has locked itself after too many wrong PINs. Please contact the system administrator to unlock it.</source>
        <translation>Токен заблокирован после слишком большого числа неверных PIN-кодов. Для разблокировки обратитесь к системному администратору.</translation>
    </message>
    <message>
        <source>The token was removed</source>
        <translation>Токен отключён</translation>
    </message>
    <message>
        <source>The token was removed or does not answer. Please connect it again and try again.</source>
        <translation>Токен отключён или не отвечает. Снова подключите его и повторите попытку.</translation>
    </message>
    <message>
        <source>The token is not registered on this computer. Please use another token, or contact the system administrator.</source>
        <translation>Токен не зарегистрирован на этом компьютере. Используйте другой токен или обратитесь к системному администратору.</translation>
    </message>
    <message>
        <source>The PIN is right, but the token no longer has the key that opens the disk. Please contact the system administrator.</source>
        <translation>PIN-код верный, но на токене больше нет ключа, открывающего диск. Обратитесь к системному администратору.</translation>
    </message>
    <message>
        <source>The token cannot be used</source>
        <translation>Токен нельзя использовать</translation>
    </message>
    <message>
        <source>The token refuses to work. Please contact the system administrator.</source>
        <translation>Токен не работает. Обратитесь к системному администратору.</translation>
    </message>
    <message>
        <source>%1 (PIN at the reader)</source>
        <translation>%1 (PIN-код на считывателе)</translation>
    </message>
    <message>
        <source>Your password has expired</source>
        <translation>Срок действия пароля истёк</translation>
    </message>
    <message>
        <source>Please choose a new password and enter it twice.</source>
        <translation>Выберите новый пароль и введите его дважды.</translation>
    </message>
    <message>
        <source>A new password cannot be saved now. The operating system starts with the old one. Please contact the system administrator.</source>
        <translation>Сейчас новый пароль сохранить нельзя. Операционная система запустится со старым. Обратитесь к системному администратору.</translation>
    </message>
    <message>
        <source>The password depends on the keyboard layout</source>
        <translation>Пароль зависит от раскладки клавиатуры</translation>
    </message>
    <message>
        <source>The new password is saved. It cannot be typed by these keyboard layouts: %1. Choose another layout when you log on.</source>
        <translation>Новый пароль сохранён. Его нельзя набрать в этих раскладках клавиатуры: %1. При входе выберите другую раскладку.</translation>
    </message>
    <message>
        <source>The disk has a fault</source>
        <translation>Диск неисправен</translation>
    </message>
    <message>
        <source>The encrypted disk reports errors when it is read or written. Please switch the computer off and contact the system administrator.</source>
        <translation>При чтении или записи зашифрованного диска возникают ошибки. Выключите компьютер и обратитесь к системному администратору.</translation>
    </message>
    <message>
        <source>The disk is in use</source>
        <translation>Диск занят</translation>
    </message>
    <message>
        <source>Another program is changing the encrypted disk. Please try again in a few seconds.</source>
        <translation>Зашифрованный диск изменяется другой программой. Повторите попытку через несколько секунд.</translation>
    </message>
    <message>
        <source>The PIN has expired</source>
        <translation>Срок действия PIN-кода истёк</translation>
    </message>
    <message>
        <source>The token wants a new PIN, which cannot be set here. Please contact the system administrator.</source>
        <translation>Токен требует новый PIN-код, который здесь задать нельзя. Обратитесь к системному администратору.</translation>
    </message>
    <message>
        <source>User name (? for a forgotten password): </source>
        <translation>Имя пользователя (? — если пароль забыт): </translation>
    </message>
    <message>
        <source>Domain (may be empty): </source>
        <translation>Домен (можно не указывать): </translation>
    </message>
    <message>
        <source>Password: </source>
        <translation>Пароль: </translation>
    </message>
    <message>
        <source>New password: </source>
        <translation>Новый пароль: </translation>
    </message>
    <message>
        <source>New password, once more: </source>
        <translation>Новый пароль ещё раз: </translation>
    </message>
    <message>
        <source>The two passwords are not the same. Please try again.</source>
        <translation>Пароли не совпадают. Повторите попытку.</translation>
    </message>
    <message>
        <source>Please wait.</source>
        <translation>Пожалуйста, подождите.</translation>
    </message>
    <message>
        <source>Please read these lines to the system administrator:</source>
        <translation>Продиктуйте эти строки системному администратору:</translation>
    </message>
    <message>
        <source>Line %1 of the response (empty to give up): </source>
        <translation>Строка %1 ответа (пустая — отмена): </translation>
    </message>
    <message>
        <source>There is a mistake in this line. Please check it and try again.</source>
        <translation>В этой строке ошибка. Проверьте её и повторите попытку.</translation>
    </message>
    <message>
        <source>The response is not accepted. Please check it and try again.</source>
        <translation>Ответ не принят. Проверьте его и повторите попытку.</translation>
    </message>
    <message>
        <source>The operating system starts.</source>
        <translation>Операционная система запускается.</translation>
    </message>
    <message>
        <source>The test boot has succeeded.</source>
        <translation>Тестовая загрузка прошла успешно.</translation>
    </message>
</context>
</TS>
