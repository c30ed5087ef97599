<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar" sourcelanguage="en_US">
<context>
    <name>pba_host</name>
    <message>
        <source>Wrong user name or password</source>
        <translation>اسم المستخدم أو كلمة المرور غير صحيحة</translation>
    </message>
    <message>
        <source>The user name, the domain or the password is wrong. Please check the keyboard layout and Caps Lock, and try again.</source>
        <translation>اسم المستخدم أو المجال أو كلمة المرور غير صحيح. يُرجى التحقق من تخطيط لوحة المفاتيح ومن مفتاح Caps Lock ثم المحاولة مرة أخرى.</translation>
    </message>
    <message>
        <source>Not enough memory</source>
        <translation>الذاكرة غير كافية</translation>
    </message>
    <message>
        <source>There is not enough memory to check the password. Please restart the computer and try again.</source>
        <translation>لا توجد ذاكرة كافية للتحقق من كلمة المرور. يُرجى إعادة تشغيل الكمبيوتر والمحاولة مرة أخرى.</translation>
    </message>
    <message>
        <source>The disk does not answer</source>
        <translation>القرص لا يستجيب</translation>
    </message>
    <message>
        <source>The encrypted disk has been removed. Please connect it again and try again.</source>
        <translation>تمت إزالة القرص المشفّر. يُرجى توصيله من جديد ثم المحاولة مرة أخرى.</translation>
    </message>
    <message>
        <source>The disk cannot be read</source>
        <translation>تتعذر قراءة القرص</translation>
    </message>
    <message>
        <source>The header of the encrypted disk cannot be read. Please contact the system administrator.</source>
        <translation>تتعذر قراءة رأس القرص المشفّر. يُرجى الاتصال بمسؤول النظام.</translation>
    </message>
    <message>
        <source>No password recovery</source>
        <translation>لا تتوفر استعادة كلمة المرور</translation>
    </message>
    <message>
        <source>This computer has no password recovery. Please contact the system administrator.</source>
        <translation>استعادة كلمة المرور غير متوفرة على هذا الكمبيوتر. يُرجى الاتصال بمسؤول النظام.</translation>
    </message>
    <message>
        <source>The password stays as it is</source>
        <translation>تبقى كلمة المرور كما هي</translation>
    </message>
    <message>
        <source>The password cannot be changed here. The operating system starts now.</source>
        <translation>لا يمكن تغيير كلمة المرور هنا. سيبدأ تشغيل نظام التشغيل الآن.</translation>
    </message>
    <message>
        <source>The new password is too short</source>
        <translation>كلمة المرور الجديدة قصيرة جدًا</translation>
    </message>
    <message>
        <source>The new password is shorter than your organisation allows. Please choose a longer one.</source>
        <translation>كلمة المرور الجديدة أقصر مما تسمح به مؤسستك. يُرجى اختيار كلمة مرور أطول.</translation>
    </message>
    <message>
        <source>The new password is the old one</source>
        <translation>كلمة المرور الجديدة هي نفسها القديمة</translation>
    </message>
    <message>
        <source>Please choose a password that differs from the old one.</source>
        <translation>يُرجى اختيار كلمة مرور تختلف عن القديمة.</translation>
    </message>
    <message>
        <source>The new password is not saved</source>
        <translation>لم تُحفظ كلمة المرور الجديدة</translation>
    </message>
    <message>
        <source>The new password cannot be written to the disk. Nothing has changed. Please contact the system administrator.</source>
        <translation>تتعذر كتابة كلمة المرور الجديدة على القرص. لم يتغير شيء. يُرجى الاتصال بمسؤول النظام.</translation>
    </message>
    <message>
        <source>The password cannot be reset</source>
        <translation>تتعذر إعادة تعيين كلمة المرور</translation>
    </message>
    <message>
        <source>The encrypted disk cannot be written, so that a new password could not be saved. Please contact the system administrator.</source>
        <translation>تتعذر الكتابة على القرص المشفّر، ولذلك لا يمكن حفظ كلمة مرور جديدة. يُرجى الاتصال بمسؤول النظام.</translation>
    </message>
    <message>
        <source>Unknown user</source>
        <translation>مستخدم غير معروف</translation>
    </message>
    <message>
        <source>The response is right, but names a user who does not exist on this computer.</source>
        <translation>الرد صحيح، لكنه يحدد مستخدمًا غير موجود على هذا الكمبيوتر.</translation>
    </message>
    <message>
        <source>Too many rejected responses</source>
        <translation>عدد كبير جدًا من الردود المرفوضة</translation>
    </message>
    <message>
        <source>The challenge is void now, no response to it is accepted any more. Please restart the password reset procedure for a new challenge.</source>
        <translation>لم يعد الطلب صالحًا ولن يُقبل أي رد عليه. يُرجى بدء إجراء إعادة تعيين كلمة المرور من جديد للحصول على طلب جديد.</translation>
    </message>
    <message>
        <source>Enter a new password</source>
        <translation>إدخال كلمة مرور جديدة</translation>
    </message>
    <message>
        <source>Please choose a new password and enter it twice. The forgotten one is not accepted any more.</source>
        <translation>يُرجى اختيار كلمة مرور جديدة وإدخالها مرتين. لم تعد كلمة المرور المنسية مقبولة.</translation>
    </message>
    <message>
        <source>Too many failed attempts</source>
        <translation>عدد كبير جدًا من المحاولات الفاشلة</translation>
    </message>
    <message>
        <source>There were too many failed attempts to log on. Please wait and try again. Seconds left: %1.</source>
        <translation>كان هناك عدد كبير جدًا من محاولات تسجيل الدخول الفاشلة. يُرجى الانتظار ثم المحاولة مرة أخرى. الثواني المتبقية: ⁨%1⁩.</translation>
    </message>
    <message>
        <source>The keyboard layout is %1.</source>
        <translation>تخطيط لوحة المفاتيح هو ⁨%1⁩.</translation>
    </message>
    <message>
        <source>Caps Lock is on.</source>
        <translation>مفتاح Caps Lock قيد التشغيل.</translation>
    </message>
    <message>
        <source>Wrong PIN</source>
        <translation>رقم PIN غير صحيح</translation>
    </message>
    <message>
        <source>This token does not open the disk</source>
        <translation>هذا الرمز المميز لا يفتح القرص</translation>
    </message>
    <message>
        <source>The PIN is missing</source>
        <translation>رقم PIN مفقود</translation>
    </message>
    <message>
        <source>Please enter the PIN of your token or smart card.</source>
        <translation>يُرجى إدخال رقم PIN الخاص بالرمز المميز أو البطاقة الذكية.</translation>
    </message>
    <message>
        <source>The PIN is wrong. Please check the keyboard layout and Num Lock, and try again.</source>
        <translation>رقم PIN غير صحيح. يُرجى التحقق من تخطيط لوحة المفاتيح ومن مفتاح Num Lock ثم المحاولة مرة أخرى.</translation>
    </message>
    <message>
        <source>The PIN is wrong. Only a few tries are left before the token locks itself.</source>
        <translation>رقم PIN غير صحيح. لم يتبقَّ سوى محاولات قليلة قبل أن يُقفل الرمز المميز.</translation>
    </message>
    <message>
        <source>The PIN is wrong. This is the last try: one more wrong PIN locks the token. If you are not sure, please contact the system administrator.</source>
        <translation>رقم PIN غير صحيح. هذه هي المحاولة الأخيرة: سيُقفل الرمز المميز عند إدخال رقم PIN خاطئ مرة أخرى. إذا لم تكن متأكدًا، فيُرجى الاتصال بمسؤول النظام.</translation>
    </message>
    <message>
        <source>The PIN is locked</source>
        <translation>رقم PIN مقفل</translation>
    </message>
    <message>
        <source>The token has locked itself after too many wrong PINs. Please contact the system administrator to unlock it.</source>
        <translation>أُقفل الرمز المميز بعد إدخال أرقام PIN خاطئة مرات كثيرة. يُرجى الاتصال بمسؤول النظام لفتح قفله.</translation>
    </message>
    <message>
        <source>The token was removed</source>
        <translation>تمت إزالة الرمز المميز</translation>
    </message>
    <message>
        <source>The token was removed or does not answer. Please connect it again and try again.</source>
        <translation>تمت إزالة الرمز المميز أو أنه لا يستجيب. يُرجى توصيله من جديد ثم المحاولة مرة أخرى.</translation>
    </message>
    <message>
        <source>The token is not registered on this computer. Please use another token, or contact the system administrator.</source>
        <translation>الرمز المميز غير مسجَّل على هذا الكمبيوتر. يُرجى استخدام رمز مميز آخر أو الاتصال بمسؤول النظام.</translation>
    </message>
    <message>
        <source>The PIN is right, but the token no longer has the key that opens the disk. Please contact the system administrator.</source>
        <translation>رقم PIN صحيح، لكن الرمز المميز لم يعد يحتوي على المفتاح الذي يفتح القرص. يُرجى الاتصال بمسؤول النظام.</translation>
    </message>
    <message>
        <source>The token cannot be used</source>
        <translation>لا يمكن استخدام الرمز المميز</translation>
    </message>
    <message>
        <source>The token refuses to work. Please contact the system administrator.</source>
        <translation>يرفض الرمز المميز العمل. يُرجى الاتصال بمسؤول النظام.</translation>
    </message>
    <message>
        <source>%1 (PIN at the reader)</source>
        <translation>⁨%1⁩ (رقم PIN على القارئ)</translation>
    </message>
    <message>
        <source>Your password has expired</source>
        <translation>انتهت صلاحية كلمة المرور</translation>
    </message>
    <message>
        <source>Please choose a new password and enter it twice.</source>
        <translation>يُرجى اختيار كلمة مرور جديدة وإدخالها مرتين.</translation>
    </message>
    <message>
        <source>A new password cannot be saved now. The operating system starts with the old one. Please contact the system administrator.</source>
        <translation>لا يمكن حفظ كلمة مرور جديدة الآن. سيبدأ تشغيل نظام التشغيل بالقديمة. يُرجى الاتصال بمسؤول النظام.</translation>
    </message>
    <message>
        <source>The password depends on the keyboard layout</source>
        <translation>كلمة المرور مرتبطة بتخطيط لوحة المفاتيح</translation>
    </message>
    <message>
        <source>The new password is saved. It cannot be typed by these keyboard layouts: %1. Choose another layout when you log on.</source>
        <translation>حُفظت كلمة المرور الجديدة. لا يمكن كتابتها بتخطيطات لوحة المفاتيح هذه: ⁨%1⁩. اختر تخطيطًا آخر عند تسجيل الدخول.</translation>
    </message>
    <message>
        <source>The disk has a fault</source>
        <translation>القرص به عطل</translation>
    </message>
    <message>
        <source>The encrypted disk reports errors when it is read or written. Please switch the computer off and contact the system administrator.</source>
        <translation>يُبلغ القرص المشفّر عن أخطاء عند القراءة أو الكتابة. يُرجى إيقاف تشغيل الكمبيوتر والاتصال بمسؤول النظام.</translation>
    </message>
    <message>
        <source>The disk is in use</source>
        <translation>القرص قيد الاستخدام</translation>
    </message>
    <message>
        <source>Another program is changing the encrypted disk. Please try again in a few seconds.</source>
        <translation>يجري برنامج آخر تغييرات على القرص المشفّر. يُرجى المحاولة مرة أخرى بعد بضع ثوانٍ.</translation>
    </message>
    <message>
        <source>The PIN has expired</source>
        <translation>انتهت صلاحية رقم PIN</translation>
    </message>
    <message>
        <source>The token wants a new PIN, which cannot be set here. Please contact the system administrator.</source>
        <translation>يطلب الرمز المميز رقم PIN جديدًا لا يمكن تعيينه هنا. يُرجى الاتصال بمسؤول النظام.</translation>
    </message>
    <message>
        <source>User name (? for a forgotten password): </source>
        <translation>اسم المستخدم (? لكلمة مرور منسية): </translation>
    </message>
    <message>
        <source>Domain (may be empty): </source>
        <translation>النطاق (يمكن تركه فارغًا): </translation>
    </message>
    <message>
        <source>Password: </source>
        <translation>كلمة المرور: </translation>
    </message>
    <message>
        <source>New password: </source>
        <translation>كلمة المرور الجديدة: </translation>
    </message>
    <message>
        <source>New password, once more: </source>
        <translation>كلمة المرور الجديدة مرة أخرى: </translation>
    </message>
    <message>
        <source>The two passwords are not the same. Please try again.</source>
        <translation>كلمتا المرور غير متطابقتين. يرجى المحاولة مرة أخرى.</translation>
    </message>
    <message>
        <source>Please wait.</source>
        <translation>يرجى الانتظار.</translation>
    </message>
    <message>
        <source>Please read these lines to the system administrator:</source>
        <translation>يرجى قراءة هذه الأسطر لمسؤول النظام:</translation>
    </message>
    <message>
        <source>Line %1 of the response (empty to give up): </source>
        <translation>السطر %1 من الرد (اتركه فارغًا للإلغاء): </translation>
    </message>
    <message>
        <source>There is a mistake in this line. Please check it and try again.</source>
        <translation>يوجد خطأ في هذا السطر. يرجى التحقق منه والمحاولة مرة أخرى.</translation>
    </message>
    <message>
        <source>The response is not accepted. Please check it and try again.</source>
        <translation>لم يُقبل الرد. يرجى التحقق منه والمحاولة مرة أخرى.</translation>
    </message>
    <message>
        <source>The operating system starts.</source>
        <translation>يبدأ نظام التشغيل.</translation>
    </message>
    <message>
        <source>The test boot has succeeded.</source>
        <translation>نجح الإقلاع التجريبي.</translation>
    </message>
</context>
</TS>
