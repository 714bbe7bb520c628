"""Transmitter sites of Europe and North Africa: name, ITU code, region, latitude, longitude, kW of the strongest
FM transmitter. Positions in decimal degrees, north and east positive, good to a kilometre or two. Names use the
letters of windows-1252 only."""

from typing import NamedTuple


class Site(NamedTuple):
    name: str
    itu: str
    region: str
    lat: float
    lon: float
    kw: float


_TABLE = """
# Germany
Wendelstein|D|Bayern|47.7031|12.0122|100
Brotjacklriegel|D|Bayern|48.8189|13.2189|100
Ochsenkopf|D|Bayern|50.0314|11.8083|100
Grünten|D|Bayern|47.5547|10.3231|100
Kreuzberg/Rhön|D|Bayern|50.3708|9.9806|100
Dillberg|D|Bayern|49.3247|11.3808|25
Brocken|D|Sachsen-Anhalt|51.7992|10.6156|100
Torfhaus/Harz|D|Niedersachsen|51.8019|10.5322|100
Steinkimmen|D|Niedersachsen|53.0428|8.4639|100
Aurich-Popens|D|Niedersachsen|53.4636|7.5303|25
Großer Inselsberg|D|Thüringen|50.8519|10.4667|100
Langenberg|D|Nordrhein-Westfalen|51.3561|7.1342|100
Teutoburger Wald|D|Nordrhein-Westfalen|51.9019|8.8236|100
Nordhelle|D|Nordrhein-Westfalen|51.1483|7.7553|35
Köln|D|Nordrhein-Westfalen|50.9472|6.9319|4
Großer Feldberg/Taunus|D|Hessen|50.2325|8.4572|100
Hoher Meißner|D|Hessen|51.2272|9.8644|100
Hornisgrinde|D|Baden-Württemberg|48.6114|8.2017|80
Feldberg/Schwarzwald|D|Baden-Württemberg|47.8739|8.0036|40
Waldenburg|D|Baden-Württemberg|49.1828|9.6389|100
Donnersberg|D|Rheinland-Pfalz|49.6244|7.9203|60
Haardtkopf|D|Rheinland-Pfalz|49.8433|7.0722|50
Göttelborner Höhe|D|Saarland|49.3436|7.0272|100
Hamburg-Moorfleet|D|Hamburg|53.5192|10.1025|80
Bungsberg|D|Schleswig-Holstein|54.2103|10.7256|50
Helpterberg|D|Mecklenburg-Vorpommern|53.4900|13.6056|100
Berlin Alexanderplatz|D|Berlin|52.5208|13.4094|100
Dresden-Wachwitz|D|Sachsen|51.0539|13.8342|100
Leipzig-Wiederau|D|Sachsen|51.1800|12.2844|100
# Netherlands, Belgium, Luxembourg
Lopik|HOL|Utrecht|52.0103|5.0536|100
Smilde|HOL|Drenthe|52.9031|6.4036|100
Roermond|HOL|Limburg|51.1881|5.9767|100
Goes|HOL|Zeeland|51.5081|3.8869|50
Egem|BEL|West-Vlaanderen|50.9758|3.2319|50
Genk|BEL|Limburg|50.9700|5.5200|50
Wavre|BEL|Brabant wallon|50.7453|4.6086|40
Anderlues|BEL|Hainaut|50.4006|4.2800|40
Dudelange|LUX|Luxembourg|49.4608|6.0975|100
Hosingen|LUX|Luxembourg|50.0172|6.0956|100
# France
Lille (Bouvigny)|F|Nord|50.4206|2.6383|150
Paris (Tour Eiffel)|F|Ile-de-France|48.8583|2.2945|10
Reims (Hautvillers)|F|Champagne|49.0961|3.9300|160
Metz (Luttange)|F|Lorraine|49.2722|6.3081|100
Strasbourg (Nordheim)|F|Alsace|48.6208|7.5044|200
Rennes (Saint-Pern)|F|Bretagne|48.2928|-1.9800|200
Brest (Roc'h Trédudon)|F|Bretagne|48.4194|-3.8783|200
Caen (Mont Pinçon)|F|Normandie|48.9733|-0.6300|200
Clermont-Ferrand (Puy de Dôme)|F|Auvergne|45.7722|2.9644|50
Lyon (Mont Pilat)|F|Rhône-Alpes|45.3856|4.5853|160
Bordeaux (Bouliac)|F|Aquitaine|44.8217|-0.5022|200
Bayonne (La Rhune)|F|Aquitaine|43.3092|-1.6356|50
Toulouse (Pic du Midi)|F|Midi-Pyrénées|42.9369|0.1422|140
Montpellier (Saint-Baudille)|F|Languedoc|43.7508|3.4908|20
Marseille (Etoile)|F|Provence|43.3819|5.4256|200
Ajaccio (Coti-Chiavari)|F|Corse|41.7631|8.7689|40
Bastia (Serra di Pigno)|F|Corse|42.6953|9.4000|30
# United Kingdom, Ireland
Wrotham|G|Kent|51.3203|0.2886|250
Sutton Coldfield|G|West Midlands|52.6006|-1.8342|250
Holme Moss|G|West Yorkshire|53.5339|-1.8572|250
Peterborough (Morborne)|G|Cambridgeshire|52.5117|-0.3217|40
Tacolneston|G|Norfolk|52.5181|1.1392|250
Rowridge|G|Isle of Wight|50.6764|-1.3689|250
North Hessary Tor|G|Devon|50.5508|-4.0078|160
Wenvoe|G|South Glamorgan|51.4594|-3.2817|250
Dover|G|Kent|51.1103|1.2478|4
Pontop Pike|G|County Durham|54.8700|-1.7744|130
Black Hill|G|Central Scotland|55.8614|-3.8744|250
Kippure|IRL|Wicklow|53.1781|-6.3317|40
Mullaghanish|IRL|Cork|51.9864|-9.1497|160
# Denmark, Sweden, Norway, Finland, Faroes, Iceland
København (Gladsaxe)|DNK|Sjælland|55.7375|12.4928|60
Tommerup|DNK|Fyn|55.3178|10.2342|60
Aarhus (Søsterhøj)|DNK|Østjylland|56.1064|10.1900|60
Rø (Årsballe)|DNK|Bornholm|55.1467|14.8800|60
Hörby|S|Skåne|55.8078|13.7286|60
Göteborg (Brudaremossen)|S|Västra Götaland|57.6936|12.0464|60
Stockholm (Nacka)|S|Stockholm|59.2972|18.1761|60
Vännäs|S|Västerbotten|63.9800|19.6700|60
Kiruna|S|Norrbotten|67.8400|20.2400|60
Bergen (Ulriken)|NOR|Hordaland|60.3775|5.3869|60
Tron|NOR|Hedmark|62.1744|10.6956|60
Gaustatoppen|NOR|Telemark|59.8539|8.6503|60
Espoo|FIN|Uusimaa|60.1778|24.6403|60
Kuopio (Vehmasmäki)|FIN|Pohjois-Savo|62.7467|27.5900|50
Oulu (Kiiminki)|FIN|Pohjois-Pohjanmaa|65.0200|25.9700|60
Rovaniemi|FIN|Lappi|66.5003|25.6931|50
Tórshavn|FRO|Streymoy|62.0200|-6.8300|10
Skálafell|ISL|Suðurland|64.2417|-21.4567|20
# Baltic states, Belarus, Ukraine, Russia, Moldova
Tallinn|EST|Harjumaa|59.4711|24.8875|30
Valgjärve|EST|Põlvamaa|58.0719|26.6519|30
Riga|LVA|Riga|56.9239|24.1372|20
Vilnius|LTU|Vilnius|54.6872|25.2147|20
Kaunas (Juragiai)|LTU|Kaunas|54.8178|23.8500|20
Minsk (Kolodishchi)|BLR|Minsk|53.9510|27.7800|10
Kyiv|UKR|Kyiv|50.4711|30.4531|20
Lviv|UKR|Lviv|49.8489|24.0400|10
Kaliningrad|RUS|Kaliningrad|54.6900|20.5000|10
Sankt-Peterburg|RUS|Sankt-Peterburg|59.9756|30.3222|20
Moskva (Ostankino)|RUS|Moskva|55.8197|37.6117|40
Straseni|MDA|Straseni|47.1356|28.5636|20
# Poland, Czech Republic, Slovakia, Hungary
Szczecin (Kolowo)|POL|Zachodniopomorskie|53.3336|14.6700|120
Zielona Góra (Jemiolów)|POL|Lubuskie|52.3400|15.2800|120
Wroclaw (Sleza)|POL|Dolnoslaskie|50.8650|16.7086|120
Gdansk (Chwaszczyno)|POL|Pomorskie|54.4406|18.4100|120
Warszawa (PKiN)|POL|Mazowieckie|52.2319|21.0067|30
Kielce (Swiety Krzyz)|POL|Swietokrzyskie|50.8597|21.0508|120
Praha (Zizkov)|CZE|Praha|50.0811|14.4511|5
Klínovec|CZE|Karlovarský kraj|50.3961|12.9678|40
Plzen (Krasov)|CZE|Plzenský kraj|49.9700|13.0800|50
Brno (Kojál)|CZE|Jihomoravský kraj|49.3706|16.8150|40
Bratislava (Kamzík)|SVK|Bratislava|48.1828|17.0953|100
Kosice (Dubník)|SVK|Presovský kraj|48.9164|21.4600|100
Budapest|HNG|Budapest|47.4911|18.9800|80
Kab-hegy|HNG|Veszprém|47.0464|17.6567|80
Kékes|HNG|Heves|47.8725|20.0092|50
# Austria, Switzerland
Wien (Kahlenberg)|AUT|Wien|48.2767|16.3353|100
Linz (Lichtenberg)|AUT|Oberösterreich|48.3847|14.2561|100
Salzburg (Gaisberg)|AUT|Salzburg|47.8044|13.1114|100
Graz (Schöckl)|AUT|Steiermark|47.1989|15.4664|100
Innsbruck (Patscherkofel)|AUT|Tirol|47.2089|11.4606|50
Säntis|SUI|Ostschweiz|47.2494|9.3433|60
Rigi|SUI|Zentralschweiz|47.0567|8.4853|60
La Dôle|SUI|Vaud|46.4253|6.0994|30
# Italy, San Marino, Malta
Torino (Eremo)|I|Piemonte|45.0419|7.7306|60
Monte Penice|I|Lombardia|44.7889|9.3214|65
Monte Venda|I|Veneto|45.3131|11.6800|80
Monte Serra|I|Toscana|43.7486|10.5550|30
Roma (Monte Mario)|I|Lazio|41.9250|12.4511|100
Monte Faito|I|Campania|40.6542|14.4861|40
Martina Franca|I|Puglia|40.7061|17.3300|60
Monte Scuro|I|Calabria|39.3300|16.3960|30
Monte Lauro|I|Sicilia|37.1150|14.8300|40
Monte Limbara|I|Sardegna|40.8522|9.1742|40
San Marino|SMR|San Marino|43.9319|12.4494|10
Gharghur|MLT|Malta|35.9236|14.4514|10
# Spain, Portugal, Andorra, Gibraltar
Madrid (Torrespaña)|E|Madrid|40.4214|-3.6636|50
Navacerrada|E|Madrid|40.7839|-3.9767|60
Barcelona (Collserola)|E|Cataluña|41.4175|2.1139|100
Rocacorba|E|Cataluña|42.0717|2.6878|40
Alicante (Aitana)|E|Comunidad Valenciana|38.6503|-0.2650|60
Mallorca (Alfabia)|E|Baleares|39.7375|2.7142|60
Sevilla (Valencina)|E|Andalucía|37.4186|-6.0697|60
Guadalcanal|E|Andalucía|38.0700|-5.8300|60
Málaga (Mijas)|E|Andalucía|36.6153|-4.6800|60
Granada (Parapanda)|E|Andalucía|37.3022|-3.9300|60
Bilbao (Monte Oiz)|E|País Vasco|43.2269|-2.5903|25
Santiago (Pedroso)|E|Galicia|42.8961|-8.5708|60
Zaragoza (La Muela)|E|Aragón|41.6028|-1.0897|40
Lisboa (Monsanto)|POR|Lisboa|38.7300|-9.1847|50
Lousã (Trevim)|POR|Coimbra|40.0894|-8.1756|50
Porto (Monte da Virgem)|POR|Porto|41.1111|-8.5944|50
Fóia (Monchique)|POR|Faro|37.3156|-8.5933|50
Andorra (Pic de Carroi)|AND|Andorra|42.5261|1.5153|10
Gibraltar|GIB|Gibraltar|36.1444|-5.3427|2
# Morocco, Algeria, Tunisia
Tanger|MRC|Tanger-Tétouan|35.7500|-5.8300|20
Fès (Zalagh)|MRC|Fès-Meknès|34.1000|-4.9600|20
Alger (Chréa)|ALG|Blida|36.4286|2.8800|20
Oran (Murdjajo)|ALG|Oran|35.7083|-0.6886|20
Annaba (Séraïdi)|ALG|Annaba|36.9125|7.6694|20
Zaghouan|TUN|Zaghouan|36.3647|10.1114|50
Aïn Draham|TUN|Jendouba|36.7800|8.7000|20
# Slovenia, Croatia, Bosnia, Serbia, Montenegro, Kosovo, North Macedonia, Albania
Krvavec|SVN|Gorenjska|46.2978|14.5342|50
Nanos|SVN|Primorska|45.7728|14.0536|50
Sljeme|HRV|Zagreb|45.8994|15.9478|100
Ucka|HRV|Istra|45.2872|14.2022|60
Biokovo|HRV|Dalmacija|43.3125|17.0514|50
Vlasic|BIH|Srednja Bosna|44.2889|17.6581|50
Avala|SRB|Beograd|44.6958|20.5142|30
Crveni Cot|SRB|Vojvodina|45.1553|19.7144|60
Lovcen|MNE|Cetinje|42.3992|18.8183|20
Goles|KOS|Prishtina|42.5614|20.9889|10
Crn Vrv|MKD|Skopje|41.9700|21.4000|20
Dajti|ALB|Tirana|41.3656|19.9231|10
# Greece, Bulgaria, Romania, Turkey
Athina (Parnitha)|GRC|Attiki|38.1700|23.7170|20
Thessaloniki (Hortiatis)|GRC|Makedonia|40.5978|23.1000|20
Kerkyra (Pantokrator)|GRC|Ionia Nisia|39.7475|19.8708|10
Sofia (Kopitoto)|BUL|Sofia|42.6400|23.2439|20
Botev|BUL|Plovdiv|42.7172|24.9172|50
Bucegi (Costila)|ROU|Prahova|45.4194|25.4722|60
Cluj (Feleac)|ROU|Cluj|46.7100|23.5900|30
Semenic|ROU|Caras-Severin|45.1819|22.0564|60
Istanbul (Camlica)|TUR|Istanbul|41.0278|29.0694|60
"""


def _parse(table: str) -> list[Site]:
    sites = []
    for line in table.splitlines():
        if not line or line.startswith("#"):
            continue
        name, itu, region, lat, lon, kw = line.split("|")
        sites.append(Site(name, itu, region, float(lat), float(lon), float(kw)))
    return sites


SITES = _parse(_TABLE)
