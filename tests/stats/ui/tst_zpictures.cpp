#include "stats/ui/logstats.h"
#include "ui/chartcontrol.h"
#include <QTest>
#include <QElapsedTimer>
#include <QApplication>
#include <QComboBox>
#include <QCheckBox>
#include <QPushButton>
#include <random>
#include <cmath>
using namespace quillon;
using namespace Qt::StringLiterals;
class Z : public QObject { Q_OBJECT
Logbook many(int n, int years) {
  std::mt19937 r(7); Logbook b;
  std::normal_distribution<> day(175, 28), hour(15.5, 3.8); std::uniform_real_distribution<> u(0,1);
  const QStringList modes{u"Es"_s,u"Tropo"_s,u"MS"_s};
  for (int i=0;i<n;++i) { const bool es=u(r)<0.75; int d=es?int(day(r)):int(u(r)*365); d=((d%365)+365)%365; int h=es?int(hour(r)):int(u(r)*24); h=((h%24)+24)%24;
   LogEntry e; e.piCode=u"D3C3"_s; e.prop=es?u"Es"_s:modes[1+int(u(r)*2)]; e.freq=u"87.60"_s; e.dateTime=*fromCivil({1985+int(u(r)*years),1,1,0,0,0}); e.dateTime.seconds+=qint64(d)*86400+h*3600; b.AddEntry(e);} return b; }
void shot(const Logbook &b, const QString &name, const QString &year, const QString &month, const QString &mode, bool time, bool draw, QSize size={1000,640}) {
  auto w = new logStats(b, u"/tmp"_s); w->resize(size);
  w->findChild<QComboBox*>(u"Combo1"_s)->setCurrentText(year);
  w->findChild<QComboBox*>(u"Combo2"_s)->setCurrentText(month);
  w->findChild<QComboBox*>(u"Combo3"_s)->setCurrentText(mode);
  w->findChild<QCheckBox*>(u"Check1"_s)->setChecked(time);
  w->show(); QTest::qWait(20);
  QElapsedTimer t; t.start();
  if (draw) QTest::mouseClick(w->findChild<QPushButton*>(u"Command3"_s), Qt::LeftButton);
  w->grab();
  qDebug() << name << t.elapsed() << "ms";
  QTest::qWait(20);
  w->grab().save(u"/tmp/stats-shots/"_s + name + u".png"_s);
  if (draw) { t.start(); QImage i = w->findChild<ChartControl*>(u"MSChart1"_s)->picture(); qDebug() << "picture" << t.elapsed(); i.save(u"/tmp/stats-shots/"_s + name + u"-picture.png"_s); }
  delete w; }
private Q_SLOTS:
 void all() {
  for (bool dark : {false,true}) {
   if (dark) { QPalette p; p = QPalette(QColor(53,53,53)); p.setColor(QPalette::Base, QColor(30,30,32)); p.setColor(QPalette::Text, QColor(230,230,230)); qApp->setPalette(p);}
   const QString s = dark ? u"-dark"_s : u""_s; const QString A=u"All"_s;
   Logbook empty; Logbook one=many(1,1); const Logbook big=many(32497,40);
   Logbook hour; for (int i=0;i<1234;++i) { LogEntry e; e.dateTime=*fromCivil({2010,6,12,18,i%60,0}); e.prop=u"Es"_s; hour.AddEntry(e);} 
   const Logbook year=many(1900,1);
   shot(empty,u"empty-before"_s+s,A,A,A,false,false);
   shot(empty,u"empty"_s+s,A,A,A,false,true);
   shot(one,u"one"_s+s,A,A,A,false,true);
   shot(hour,u"hour-m"_s+s,A,A,A,true,true);
   shot(hour,u"hour-d"_s+s,A,u"June"_s,A,true,true);
   shot(big,u"big-m"_s+s,A,A,A,false,true);
   shot(big,u"big-d"_s+s,A,u"June"_s,A,false,true);
   shot(big,u"big-mt"_s+s,A,A,A,true,true);
   shot(big,u"big-dt"_s+s,A,u"June"_s,u"Es"_s,true,true);
   shot(year,u"year-dt"_s+s,u"1985"_s,u"July"_s,u"Es"_s,true,true,{1600,900});
   shot(year,u"year-d-small"_s+s,u"1985"_s,u"July"_s,u"Es"_s,false,true,{640,420});
   shot(year,u"year-mt-small"_s+s,u"1985"_s,A,A,true,true,{640,420});
  }}
};
QTEST_MAIN(Z)
#include "tst_zpictures.moc"
