"""How eight systems write numbers, money and dates, and rounding, in exact fractions.

Written from the customs themselves; nothing is taken from the program, so that both can be compared.
Blanks of every kind are plain ones here, since a reader of paper can't tell them apart.
"""
from fractions import Fraction


class Customs:
    """One system: marks, the least digits before thousands are grouped in money, currency, dates."""

    def __init__(self, decimal, group, least_grouped, money, date, hours):
        self.decimal = decimal
        self.group = group
        self.least_grouped = least_grouped
        self.money = money
        self.date = date
        self.hours = hours


SYSTEMS = {
    "en_US": Customs(".", ",", 4, "$%s", "{m}/{d}/{y}", 12),
    "es_ES": Customs(",", ".", 5, "%s €", "{d}/{m}/{y}", 24),
    "de_DE": Customs(",", ".", 4, "%s €", "{dd}.{mm}.{y}", 24),
    "fr_FR": Customs(",", " ", 4, "%s €", "{dd}/{mm}/{y}", 24),
    "ru_RU": Customs(",", " ", 4, "%s ₽", "{dd}.{mm}.{y}", 24),
    "pt_PT": Customs(",", " ", 5, "%s €", "{dd}/{mm}/{y}", 24),
    "it_IT": Customs(",", ".", 4, "%s €", "{dd}/{mm}/{y}", 24),
    "fr_CH": Customs(",", " ", 4, "%s CHF", "{dd}.{mm}.{y}", 24),
}


def decimal_of(number):
    """A number of the database as it was meant: 0.1 is a tenth."""
    return Fraction(repr(number)) if isinstance(number, float) else Fraction(number)


def rounded(value, places):
    """Half away from zero."""
    scaled = abs(value) * 10**places
    whole = (scaled + Fraction(1, 2)).__floor__()
    return Fraction(whole if value >= 0 else -whole, 10**places)


def half_even(value, places):
    return Fraction(round(value * 10**places), 10**places)


def digits(value, places):
    """Plain digits with a point; the value has no more places than that."""
    whole = abs(value * 10**places)
    assert whole.denominator == 1
    text = str(whole.numerator).rjust(places + 1, "0")
    sign = "-" if value < 0 else ""
    return sign + (text[:-places] + "." + text[-places:] if places else text)


def near_ties(value, places):
    """The rounded value; both neighbours where binary arithmetic can't be asked to hit a tie exactly."""
    exact = rounded(value, places)
    step = Fraction(1, 10**places)
    distance = abs(abs(value - exact) - step / 2)
    if distance < max(abs(value), 1) * Fraction(1, 10**12) and distance != 0:
        return [exact, exact + (step if value > exact else -step)]
    return [exact]


def with_marks(text, customs, least_grouped=None):
    """Plain digits with the system's marks; grouped only where a least count of digits is given."""
    sign, text = ("-", text[1:]) if text.startswith("-") else ("", text)
    whole, _, rest = text.partition(".")
    if least_grouped and len(whole) >= least_grouped:
        groups = []
        while whole:
            groups.insert(0, whole[-3:])
            whole = whole[:-3]
        whole = customs.group.join(groups)
    return sign + whole + (customs.decimal + rest if rest else "")


def fixed(value, places, customs):
    """As the picture "#0.000" with so many places gives it: no thousands."""
    return [with_marks(digits(each, places), customs) for each in near_ties(value, places)]


def plain(value, customs):
    """As few digits as the number has."""
    if value is None:
        return [""]
    text = digits(rounded(decimal_of(value), 9), 9).rstrip("0").rstrip(".")
    return [with_marks(text, customs)]


def options_money(value, currency, customs, blank=""):
    """The options' currency in front, thousands always grouped."""
    return [sign_first(currency + blank, with_marks(digits(each, 2), customs, 4)) for each in near_ties(value, 2)]


def sign_first(currency, text):
    return "-" + currency + text[1:] if text.startswith("-") else currency + text


def system_money(value, customs):
    return [customs.money % with_marks(digits(each, 2), customs, customs.least_grouped) for each in near_ties(value, 2)]


def date_texts(stored, customs):
    """The ways in which a stored date and time may stand; the date alone at midnight."""
    date, _, time = stored.partition(" ")
    year, month, day = date.split("-")
    text = customs.date.format(y=year, m=int(month), mm=month, d=int(day), dd=day)
    if time in ("", "00:00:00"):
        return [text]
    hour, minute, second = time.split(":")
    half = ""
    if customs.hours == 12:
        half = " AM" if int(hour) < 12 else " PM"
        hour = str((int(hour) + 11) % 12 + 1)
    ways = []
    for shown in {str(int(hour)), hour.rjust(2, "0")}:
        for mark in ":.":
            ways.append(text + " " + mark.join((shown, minute, second)) + half)
    return ways
