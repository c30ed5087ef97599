<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar" sourcelanguage="en_US">
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
        <translation>المصادقة قبل بدء التشغيل</translation>
    </message>
    <message>
        <source>WARNING!
Verbose debug logging is enabled.
Your private information can be saved to log file.</source>
        <translation>تحذير!
تسجيل التصحيح المفصّل مفعّل.
قد تُحفظ معلوماتك الخاصة في ملف السجل.</translation>
    </message>
    <message>
        <source>To authenticate with a token or smart card, please connect it now.</source>
        <translation>للمصادقة باستخدام رمز مميز أو بطاقة ذكية، يُرجى توصيلهما الآن.</translation>
    </message>
    <message>
        <source>Domain</source>
        <translation>المجال</translation>
    </message>
    <message>
        <source>Domain:</source>
        <translation>المجال:</translation>
    </message>
    <message>
        <source>Change</source>
        <comment>Change domain</comment>
        <translation>تغيير</translation>
    </message>
    <message>
        <source>Login</source>
        <translation>اسم المستخدم</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>كلمة المرور</translation>
    </message>
    <message>
        <source>CONTINUE</source>
        <comment>Login</comment>
        <translation>متابعة</translation>
    </message>
    <message>
        <source>Forgot your password?</source>
        <translation>هل نسيت كلمة المرور؟</translation>
    </message>
    <message>
        <source>Password change</source>
        <translation>تغيير كلمة المرور</translation>
    </message>
    <message>
        <source>New password</source>
        <translation>كلمة المرور الجديدة</translation>
    </message>
    <message>
        <source>Confirm new password</source>
        <translation>تأكيد كلمة المرور الجديدة</translation>
    </message>
    <message>
        <source>CONTINUE</source>
        <comment>Change password</comment>
        <translation>متابعة</translation>
    </message>
    <message>
        <source>Start Windows without password change</source>
        <translation>بدء تشغيل Windows من دون تغيير كلمة المرور</translation>
    </message>
    <message>
        <source>Password Reset. Step 1: Entropy</source>
        <translation>إعادة تعيين كلمة المرور. الخطوة 1: بيانات عشوائية</translation>
    </message>
    <message>
        <source>Please press random keys several times or move mouse to increase entropy.</source>
        <translation>يُرجى الضغط على مفاتيح عشوائية عدة مرات أو تحريك الماوس لزيادة العشوائية.</translation>
    </message>
    <message>
        <source>Password Reset. Step 2: Challenge</source>
        <translation>إعادة تعيين كلمة المرور. الخطوة 2: الطلب</translation>
    </message>
    <message>
        <source>Please tell the system administrator the name of your computer and the strings displayed on the screen:</source>
        <translation>يُرجى إبلاغ مسؤول النظام باسم الكمبيوتر وبالسلاسل المعروضة على الشاشة:</translation>
    </message>
    <message>
        <source>String 1:</source>
        <translation>السلسلة 1:</translation>
    </message>
    <message>
        <source>String 2:</source>
        <translation>السلسلة 2:</translation>
    </message>
    <message>
        <source>String 3:</source>
        <translation>السلسلة 3:</translation>
    </message>
    <message>
        <source>CONTINUE</source>
        <comment>Challenge.</comment>
        <translation>متابعة</translation>
    </message>
    <message>
        <source>Password Reset. Step 3: Response</source>
        <translation>إعادة تعيين كلمة المرور. الخطوة 3: الرد</translation>
    </message>
    <message>
        <source>Please enter the strings provided by the system administrator, then click &quot;CONTINUE&quot;:</source>
        <translation>يُرجى إدخال السلاسل التي يقدمها مسؤول النظام، ثم النقر فوق «متابعة»:</translation>
    </message>
    <message>
        <source>Accepted</source>
        <translation>مقبولة</translation>
    </message>
    <message>
        <source>Rejected</source>
        <translation>مرفوضة</translation>
    </message>
    <message>
        <source>Response accepted.</source>
        <translation>تم قبول الرد.</translation>
    </message>
    <message>
        <source>CONTINUE</source>
        <comment>Response</comment>
        <translation>متابعة</translation>
    </message>
    <message>
        <source>Preparing for compatibility check of the hard drive and authentication agent.</source>
        <comment>Test boot</comment>
        <translation>يجري التحضير لفحص التوافق بين القرص الثابت ووكيل المصادقة.</translation>
    </message>
    <message>
        <source>If the computer becomes unresponsive for more than 10 minutes, please restart it manually and notify your system administrator.</source>
        <comment>Test boot</comment>
        <translation>إذا توقف الكمبيوتر عن الاستجابة لأكثر من 10 دقائق، يُرجى إعادة تشغيله يدويًا وإبلاغ مسؤول النظام.</translation>
    </message>
    <message>
        <source>Windows will soon restart. Press any key or click &quot;CONTINUE&quot; to restart now.</source>
        <comment>Test boot</comment>
        <translation>ستتم إعادة تشغيل Windows قريبًا. اضغط على أي مفتاح أو انقر فوق «متابعة» لإعادة التشغيل الآن.</translation>
    </message>
    <message>
        <source>CONTINUE</source>
        <comment>Test boot</comment>
        <translation>متابعة</translation>
    </message>
    <message>
        <source>Please connect your token or smart card</source>
        <translation>يُرجى توصيل الرمز المميز أو البطاقة الذكية</translation>
    </message>
    <message>
        <source>Temporary password reset</source>
        <translation>إعادة تعيين مؤقتة لكلمة المرور</translation>
    </message>
    <message>
        <source>To authenticate using user name and password, please eject your smart card.</source>
        <translation>للمصادقة باستخدام اسم المستخدم وكلمة المرور، يُرجى إخراج البطاقة الذكية.</translation>
    </message>
    <message>
        <source>To authenticate using user name and password, please eject all smart cards.</source>
        <translation>للمصادقة باستخدام اسم المستخدم وكلمة المرور، يُرجى إخراج جميع البطاقات الذكية.</translation>
    </message>
    <message>
        <source>Quillmark authentication agent is starting.</source>
        <translation>يجري بدء تشغيل وكيل المصادقة Quillmark.</translation>
    </message>
    <message>
        <source>Starting Windows</source>
        <translation>يجري بدء تشغيل Windows</translation>
    </message>
    <message>
        <source>No credentials for logon.</source>
        <translation>لا توجد بيانات اعتماد لتسجيل الدخول.</translation>
    </message>
    <message>
        <source>Credentials of all users were removed. No one can log on to this computer by credentials.
Please contact the system administrator.</source>
        <translation>تمت إزالة بيانات اعتماد جميع المستخدمين. لا يمكن لأحد تسجيل الدخول إلى هذا الكمبيوتر ببيانات الاعتماد.
يُرجى الاتصال بمسؤول النظام.</translation>
    </message>
    <message>
        <source>PBA Test mode</source>
        <translation>وضع اختبار PBA</translation>
    </message>
    <message>
        <source>Use this mode to test keyboard and pointing devices.</source>
        <translation>استخدم هذا الوضع لاختبار لوحة المفاتيح وأجهزة التأشير.</translation>
    </message>
    <message>
        <source>Type any characters here</source>
        <translation>اكتب أي أحرف هنا</translation>
    </message>
    <message>
        <source>START WINDOWS</source>
        <translation>بدء تشغيل WINDOWS</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>إنهاء</translation>
    </message>
    <message>
        <source>Restart</source>
        <translation>البدء من جديد</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>تعليمات</translation>
    </message>
</context>
<context>
    <name>QGuiApplication</name>
    <message>
        <source>QT_LAYOUT_DIRECTION</source>
        <translation>RTL</translation>
    </message>
</context>
<context>
    <name>QLineEdit</name>
    <message>
        <source>&amp;Undo</source>
        <translation>تراجع</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>إعادة</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>قص</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>نسخ</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>لصق</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>حذف</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>تحديد الكل</translation>
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
        <translation>السلسلة %0:</translation>
    </message>
</context>
<context>
    <name>pba::QtViewImpl</name>
    <message>
        <source>No help for this screen</source>
        <translation>لا توجد تعليمات لهذه الشاشة</translation>
    </message>
    <message>
        <source>This screen does not have a special help message.</source>
        <translation>لا تحتوي هذه الشاشة على رسالة تعليمات خاصة بها.</translation>
    </message>
    <message>
        <source>Preboot authentication help</source>
        <translation>تعليمات المصادقة قبل بدء التشغيل</translation>
    </message>
    <message>
        <source>Domain: %0</source>
        <translation>المجال: ⁨%0⁩</translation>
    </message>
    <message>
        <source>User name field is empty</source>
        <translation>حقل اسم المستخدم فارغ</translation>
    </message>
    <message>
        <source>User name field is empty. Please enter a user name.</source>
        <translation>حقل اسم المستخدم فارغ. يُرجى إدخال اسم مستخدم.</translation>
    </message>
    <message>
        <source>Password field is empty</source>
        <translation>حقل كلمة المرور فارغ</translation>
    </message>
    <message>
        <source>Password field is empty. Please enter a password.</source>
        <translation>حقل كلمة المرور فارغ. يُرجى إدخال كلمة مرور.</translation>
    </message>
    <message>
        <source>CONTINUE</source>
        <translation>متابعة</translation>
    </message>
    <message>
        <source>Forgot your password?</source>
        <translation>هل نسيت كلمة المرور؟</translation>
    </message>
    <message>
        <source>CANCEL</source>
        <translation>إلغاء</translation>
    </message>
    <message>
        <source>Internal Error</source>
        <translation>خطأ داخلي</translation>
    </message>
    <message>
        <source>Internal PBA error.

Function: %1
Line: %2
res: %3(%4)</source>
        <translation>خطأ داخلي في PBA.

الدالة: %1
السطر: %2
res: %3(%4)</translation>
    </message>
    <message>
        <source>WARNING!
Verbose debug logging is enabled.
Your private data can be saved to log file.</source>
        <translation>تحذير!
تسجيل التصحيح المفصّل مفعّل.
قد تُحفظ بياناتك الخاصة في ملف السجل.</translation>
    </message>
    <message>
        <source>WARNING!
Debug logging is enabled.
Your private data can be saved to log file.</source>
        <translation>تحذير!
تسجيل التصحيح مفعّل.
قد تُحفظ بياناتك الخاصة في ملف السجل.</translation>
    </message>
    <message>
        <source>User: %0</source>
        <translation>المستخدم: ⁨%0⁩</translation>
    </message>
    <message>
        <source>Domain: %0, User: %1</source>
        <translation>المجال: ⁨%0⁩، المستخدم: ⁨%1⁩</translation>
    </message>
    <message>
        <source>Password change procedure initiated. Please enter and confirm new password.</source>
        <translation>بدأ إجراء تغيير كلمة المرور. يُرجى إدخال كلمة المرور الجديدة وتأكيدها.</translation>
    </message>
    <message>
        <source>Enter new password</source>
        <translation>إدخال كلمة مرور جديدة</translation>
    </message>
    <message>
        <source>Wrong password</source>
        <translation>كلمة مرور غير صحيحة</translation>
    </message>
    <message>
        <source>New password is not confirmed. Please confirm your new password.</source>
        <translation>لم يتم تأكيد كلمة المرور الجديدة. يُرجى تأكيد كلمة المرور الجديدة.</translation>
    </message>
    <message>
        <source>Password Reset</source>
        <translation>إعادة تعيين كلمة المرور</translation>
    </message>
    <message>
        <source>You are starting the password reset procedure. You have to contact the system administrator, gave him some data and enter back other data, it can take some time.

Are you sure that you want to start the password reset procedure?</source>
        <translation>أنت على وشك بدء إجراء إعادة تعيين كلمة المرور. سيتعين عليك الاتصال بمسؤول النظام وتزويده ببعض البيانات ثم إدخال البيانات التي يقدمها لك، وقد يستغرق ذلك بعض الوقت.

هل تريد بالتأكيد بدء إجراء إعادة تعيين كلمة المرور؟</translation>
    </message>
    <message>
        <source>Password Reset: confirmation of exit</source>
        <translation>إعادة تعيين كلمة المرور: تأكيد الإنهاء</translation>
    </message>
    <message>
        <source>Are you sure that you want to exit the password reset procedure?</source>
        <translation>هل تريد بالتأكيد إنهاء إجراء إعادة تعيين كلمة المرور؟</translation>
    </message>
    <message>
        <source>QUIT</source>
        <translation>إنهاء</translation>
    </message>
    <message>
        <source>Password Reset: confirmation of restart</source>
        <translation>إعادة تعيين كلمة المرور: تأكيد البدء من جديد</translation>
    </message>
    <message>
        <source>Are you sure that you want to restart the password reset procedure?</source>
        <translation>هل تريد بالتأكيد بدء إجراء إعادة تعيين كلمة المرور من جديد؟</translation>
    </message>
    <message>
        <source>RESTART</source>
        <translation>البدء من جديد</translation>
    </message>
    <message>
        <source>Response line is rejected. Please check it carefully and correct invalid characters.</source>
        <translation>تم رفض سطر الرد. يُرجى التحقق منه بعناية وتصحيح الأحرف غير الصالحة.</translation>
    </message>
    <message>
        <source>Response is rejected. Please click the Continue button to enter response strings again.</source>
        <translation>تم رفض الرد. يُرجى النقر فوق الزر «متابعة» لإدخال سلاسل الرد مرة أخرى.</translation>
    </message>
    <message>
        <source>Response is accepted. Please click the Continue button to specify a new password.</source>
        <translation>تم قبول الرد. يُرجى النقر فوق الزر «متابعة» لتحديد كلمة مرور جديدة.</translation>
    </message>
</context>
</TS>
