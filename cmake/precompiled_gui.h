// Precompiled for code with windows.
#pragma once
#include "precompiled_core.h"
#include <QAbstractItemModel>
#include <QApplication>
#include <QBoxLayout>
#include <QComboBox>
#include <QDialog>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QTableView>
#include <QTimer>
#include <QWidget>
