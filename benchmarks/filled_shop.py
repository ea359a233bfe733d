"""The shop that the program is measured in."""


def filled_shop(test):
    """A shop whose start reads no empty value: each one would cost a pause of 100 ms."""
    shop = test.shop("--receptions", "20", "--interval", "4")
    lines = shop.own_settings.read_bytes().split(b"\r\n")
    shop.own_settings.write_bytes(
        b"\r\n".join(line + b"x" if line.endswith(b"=") else line for line in lines))
    with open(shop.ticket_settings, "ab") as ticket:
        ticket.write(b"DOMAIN=example.com\r\n")
    return shop
