<!DOCTYPE html>
<html><head><meta charset="utf-8"><title>Your order</title>
<style>body {{ font: 16px/1.5 Georgia, serif; max-width: 36em; margin: 2em auto }} td {{ padding: .2em 1em }} .sum {{ font-weight: bold }}</style></head>
<body>
<h1>{shop}</h1>
<p>Dear {htmlspecialchars name},</p>
<p>thank you for your order <b>{order}</b> of {date}. We have packed it with care and handed it to
{htmlspecialchars carrier} this morning. It should reach you on {day}; you can follow its way with the number
<code>{tracking}</code> on the page of the carrier. If nobody is at home, the driver leaves a card and brings the
parcel to the nearest shop, where it waits for you for seven days.</p>
<h2>Where it goes</h2>
<address>{htmlspecialchars street}<br>{postcode} {htmlspecialchars city}<br>{country}</address>
<h2>What it costs</h2>
<p>All prices are given with the taxes of your country; we buy the paper of our parcels from a mill that lives on wind alone.</p>
<table>
<tr><td>{items} books</td><td>{goods}</td></tr>
<tr><td>Packing and shipping</td><td>{shipping}</td></tr>
<tr><td>Your discount as a regular reader</td><td>-{discount}</td></tr>
<tr class="sum"><td>To pay</td><td>{total} {currency}</td></tr>
</table>
<p>The sum is taken from the account that you gave us when you ordered; there is nothing that you have to do. The
invoice lies in the parcel. Should a book be damaged or not be what you hoped for, send it back within thirty days,
in whatever box you have at hand, and we return the money on the day on which it arrives here.</p>
<p>Questions? Answer this letter, write to <a href="mailto:{mail}">by mail</a> or call {phone}, on weekdays from nine
to six. You reach people who have read most of what we sell, and who like to talk about it. On Saturdays the
shop itself is open until four; the kettle is on, and the harbour ferry stops at the door.</p>
<p>With kind regards from the harbour,<br>{signature}</p>
</body></html>
