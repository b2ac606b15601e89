#!/usr/bin/env python3
"""Plants one dialog after the other in a small tree and expects the check to find each that the storm misses."""

import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
import check_dialogs

BOOK = """
const QVector<DialogKind> &dialogKinds()
{
    static const QString host = QStringLiteral("Known");
    static const QVector<DialogKind> kinds{{host, none, kNoButton}, {QStringLiteral("knownBox"), host, kOneButton}};
    return kinds;
}
QString other() { return QStringLiteral("Unknown"); }
"""


class CheckDialogs(unittest.TestCase):
    def faults(self, files, exceptions=()):
        with tempfile.TemporaryDirectory() as folder:
            root = Path(folder)
            for name, text in {"tests/storm/dialogbook.cpp": BOOK, **files}.items():
                path = root / name
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_text(text)
            return list(check_dialogs.faults(root, dict.fromkeys(exceptions, "reason")))

    def source(self, text, exceptions=()):
        return self.faults({"src/app/a.cpp": text}, exceptions)

    def test_known_dialogs_pass(self):
        self.assertEqual([], self.source("class Known : public QDialog\n{\n};\n"))
        self.assertEqual([], self.source("class Window : public QWidget\n{\n};\n"))

    def test_unknown_class_is_found(self):
        for base in ("QDialog", "QMessageBox", "QFileDialog", "QWizard"):
            self.assertEqual(["src/app/a.cpp: the storm does not know Unknown"],
                             self.source(f"class Unknown : public {base}\n{{\n}};\n"))

    def test_class_behind_another_is_found(self):
        later = {"src/app/a.h": "class Unknown final : public Known\n{\n};\n",
                 "src/app/b.h": "class Known : public QDialog\n{\n};\n"}
        self.assertEqual(["src/app/a.h: the storm does not know Unknown"], self.faults(later))

    def test_dialog_that_is_a_second_base_is_found(self):
        self.assertEqual(["src/app/a.cpp: the storm does not know Unknown"],
                         self.source("class Unknown : public Other,\n    public QDialog\n{\n};\n"))

    def test_box_is_known_by_its_name(self):
        box = 'auto *box = new QMessageBox(a,\n  b);\nbox->setObjectName(QStringLiteral("%s"));\n'
        self.assertEqual([], self.source(box % "knownBox"))
        self.assertEqual(['src/app/a.cpp: the storm does not know "surprise"'], self.source(box % "surprise"))
        self.assertEqual(['src/app/a.cpp: the storm does not know "surprise"'],
                         self.source('QDialog box(this);\nbox.setObjectName("surprise");\n'))

    def test_name_of_the_next_box_is_not_that_of_this(self):
        self.assertEqual(["src/app/a.cpp:1: a box without an object name, so the storm cannot know it"],
                         self.source("QMessageBox first;\nauto *second = new QDialog(a);\n"
                                     'second->setObjectName("knownBox");\n'))

    def test_name_that_is_given_elsewhere_is_found(self):
        self.assertEqual(['src/app/a.cpp: the storm does not know "newConfirmation"'],
                         self.source('confirm({QStringLiteral("newConfirmation"), title});\n'))
        self.assertEqual(['src/app/a.cpp: the storm does not know "otherBox"'],
                         self.source('const QLatin1String kBox("otherBox");\n'))

    def test_object_name_of_a_class_passes(self):
        self.assertEqual([], self.source('class NewDialog : public QDialog {};\nsetObjectName("newDialog");\n',
                                         ["NewDialog"]))

    def test_box_without_a_name_is_found(self):
        for text in ("auto *box = new QFileDialog(this);\n", "QMessageBox box(this);\nbox.exec();\n",
                     "QMessageBox box;\n", "QProgressDialog box(this);\n", "auto box = std::make_unique<QMessageBox>();\n",
                     "QMessageBox::warning(this, a, b);\n", "auto name = QFileDialog::getOpenFileName(this);\n"):
            self.assertEqual(["src/app/a.cpp:1: a box without an object name, so the storm cannot know it"],
                             self.source(text))
        self.assertEqual([], self.source("box = new QMessageBox(a);\nbox->setObjectName(question.name);\n"))
        self.assertEqual([], self.source("const bool result = QMessageBox::event(event);\n"))

    def test_exception_is_left_out_as_long_as_it_is_there(self):
        unknown = "class Unknown : public QDialog\n{\n};\n"
        self.assertEqual([], self.source(unknown, ["Unknown"]))
        self.assertEqual(["Gone is an exception, and there is no such dialog"],
                         self.source(unknown, ["Unknown", "Gone"]))


if __name__ == "__main__":
    unittest.main()
